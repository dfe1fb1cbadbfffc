#pragma once

#include <QPrinter>
#include <QString>
#include <memory>

#include "desktop/user_settings.h"

namespace tolva::desktop {

/// What is printed on: a queue of the system's, or a folder that takes each job as a PDF file of its own.
struct PrintTarget {
    enum class Kind { system_default, queue, pdf_folder };

    Kind kind = Kind::system_default;
    /// The queue's name, or the folder.
    QString name;

    friend bool operator==(const PrintTarget&, const PrintTarget&) = default;
};

/// The target that all printing uses, as it was chosen last.
PrintTarget load_print_target(const UserSettings& settings);
void save_print_target(UserSettings& settings, const PrintTarget& target);

/// Whether anything can be printed there: the queue is known, the folder can be written to.
bool is_ready(const PrintTarget& target);

/// A printer set up for the target: US Letter, positions counted from the paper's corner. Null when the
/// target isn't ready.
std::unique_ptr<QPrinter> make_printer(const PrintTarget& target);

/// Whether the system's print server refused the job that was sent to it last. Qt doesn't say, the library
/// under it does; false where that is another one.
bool queue_refused_job();

/// A name in the folder for the next job, numbered behind those that are there.
QString next_pdf_file(const QString& folder, const QString& job);
/// The same, and the file exists from now on, so that no other job or program takes the name. Empty where
/// none can be made.
QString reserve_pdf_file(const QString& folder, const QString& job);

/// Whether a printed file has its end: on a full disk it hasn't, and the toolkit doesn't say so.
bool is_whole_pdf_file(const QString& file);
/// Removes the part of a file that a job without an end has left. Devices, and no name at all, stay as they
/// are.
void remove_pdf_file(const QString& file);

} // namespace tolva::desktop
