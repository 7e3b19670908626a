#pragma once

#include <QString>
#include <QStringList>
#include <variant>

namespace orvantile::platform::desktop {

/// A page that an application on the session bus shows on demand (`org.freedesktop.Application`).
struct BusPage {
    QString name; ///< of the application on the bus; its object's path follows from it
    QString panel;

    friend bool operator==(const BusPage&, const BusPage&) = default;
};

/// A page that the program of a desktop entry shows.
struct EntryPage {
    QString entry;         ///< with its suffix, such as "systemsettings.desktop"
    QStringList arguments; ///< added to those of the entry

    friend bool operator==(const EntryPage&, const EntryPage&) = default;
};

/// A page that a program without a desktop entry shows.
struct ProgramPage {
    QString program;
    QStringList arguments;

    friend bool operator==(const ProgramPage&, const ProgramPage&) = default;
};

using SettingsPage = std::variant<BusPage, EntryPage, ProgramPage>;

} // namespace orvantile::platform::desktop
