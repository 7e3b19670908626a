#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <chrono>
#include <utility>
#include <vector>

namespace orvantile::test {

/// Where the truth about a program's menus comes from.
enum class TruthSource {
    accessibilityBus, ///< read over the bus by a program that shares nothing with the one under test
    insideQt          ///< told by a plugin in the program, which also knows what has really been triggered
};

/// A program of the distribution whose shortcuts are fired.
struct Program {
    QString name; ///< of the result file
    QString title;
    QString package;
    QString toolkit;
    QString source; ///< where the names in the HUD come from
    TruthSource truth = TruthSource::accessibilityBus;
    QString command;
    QStringList arguments{}; ///< "~" stands for the home directory
    QString windowClass;

    QString prepare{};            ///< typed into the window before anything is fired
    QStringList startKeys{};      ///< pressed when the window is there, to get past greetings
    bool opensMenusFirst = false; ///< its menus are empty until they have been opened
    bool escapes = true;          ///< Escape does no harm to its main window
    QStringList leaveOut{};       ///< further titles that are not to be fired
    std::vector<std::pair<QString, QByteArray>> files{}; ///< in the home directory
    std::vector<std::pair<QString, QString>> variables{};
    std::vector<std::pair<QString, QString>>
        declared{};                                ///< titles and keys of its menus, where it does not tell
    std::pair<QString, QString> shortcutsWindow{}; ///< file and resource, where a window lists the shortcuts
    std::chrono::milliseconds settle{250}; ///< nothing changes on the screen for so long once it has acted
    QString note{};
};

[[nodiscard]] const std::vector<Program>& allPrograms();

/// Throws std::runtime_error for an unknown name.
[[nodiscard]] const Program& programNamed(const QString& name);

} // namespace orvantile::test
