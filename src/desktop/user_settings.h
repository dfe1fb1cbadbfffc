#pragma once

#include <QString>
#include <string>

namespace tolva::desktop {

/// What belongs to the user and not to the stores: where windows were, what is printed on. A text file of
/// sections and keys, written at once.
class UserSettings {
  public:
    explicit UserSettings(QString file) : file_(std::move(file)) {}

    /// Where the system keeps such files.
    static QString usual_file();

    QString value(const QString& section, const QString& key, const QString& otherwise = {}) const;
    void save(const QString& section, const QString& key, const QString& value);

  private:
    QString file_;
};

} // namespace tolva::desktop
