#pragma once

#include <QString>
#include <string>

namespace tolva::desktop {

/// What belongs to the user and not to the stores: where windows were, what is printed on. Sections and keys,
/// written at once.
class UserSettings {
  public:
    /// In a text file; in the registry where the place begins with the name of one of its trees.
    explicit UserSettings(QString place) : place_(std::move(place)) {}

    /// Where the system keeps such things: Windows in the user's part of the registry, others in a file.
    static QString usual_place();

    QString value(const QString& section, const QString& key, const QString& otherwise = {}) const;
    void save(const QString& section, const QString& key, const QString& value);

  private:
    QString place_;
};

} // namespace tolva::desktop
