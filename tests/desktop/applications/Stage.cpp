#include "desktop/applications/Stage.h"

#include <stdexcept>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

/// Real applications on a busy machine take their time to start.
constexpr std::chrono::seconds startPatience{60};

/// First-run dialogs of the office suite, switched off as a user would.
constexpr auto officeSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="ShowTipOfTheDay" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="FirstRun" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Setup/Product"><prop oor:name="ooSetupLastVersion" oor:op="fuse"><value>99.9</value></prop></item>
</oor:items>
)";

} // namespace

const Application mousepad{
    u"mousepad"_s, {u"--disable-server"_s, u"notes.txt"_s}, u"mousepad"_s, u"Ctrl+A"_s, u"⌃A  Select All"_s};
const Application geany{u"geany"_s, {u"-i"_s, u"notes.txt"_s}, u"geany"_s, u"Ctrl+A"_s, u"⌃A  Select All"_s};
const Application thunar{u"thunar"_s, {u"."_s}, u"thunar"_s, u"Ctrl+A"_s, u"⌃A  Select all Files"_s};
const Application writer{u"soffice"_s,
                         {u"--writer"_s, u"--norestore"_s, u"--nologo"_s, u"--nofirststartwizard"_s},
                         u"libreoffice-writer"_s,
                         u"Ctrl+A"_s,
                         u"⌃A  Select All"_s};
const Application gimp{u"gimp"_s,
                       {u"--no-splash"_s, u"--new-instance"_s, u"--no-fonts"_s, u"picture.png"_s},
                       u"gimp"_s,
                       u"Ctrl+A"_s,
                       u"⌃A  All"_s};

Stage::Stage(SessionOptions options)
    : desktop(std::move(options)),
      injector(desktop.display()),
      watcher(desktop.display()),
      hudWatcher(desktop.display()) {
    // A HUD that goes soon keeps the tests short; no sound server is wanted here.
    desktop.writeFile(u".config/orvantile/orvantile.ini"_s,
                      "[General]\ndisplaySeconds=0.3\nsoundEnabled=false\n");
    desktop.writeFile(u"notes.txt"_s, "first line\nsecond line\nthird line\n");
    desktop.writeFile(u".config/libreoffice/4/user/registrymodifications.xcu"_s, officeSettings);
    desktop.setVariable(u"SAL_USE_VCLPLUGIN"_s, u"gtk3"_s);
    desktop.setVariable(u"GTK_MODULES"_s, u"gail:atk-bridge"_s); // GTK 2 tells its menus with these alone
}

Window Stage::start(const Application& application) {
    auto arguments = application.arguments;
    for (auto& argument : arguments) {
        if (argument.contains(u'.')) {
            argument = desktop.home() + u'/' + argument;
        }
    }
    applications[application.program] = desktop.start(application.program, arguments);
    return watcher.awaitActive(ofClass(application.windowClass), QDeadlineTimer(startPatience));
}

ChildProcess& Stage::process(const Application& application) {
    return *applications.at(application.program);
}

void Stage::startOrvantile(const QStringList& through) {
    const auto before = watcher.activeWindow();
    auto command = through;
    command += QStringLiteral(ORVANTILE_EXECUTABLE);
    const auto program = command.takeFirst();
    product = desktop.start(program, command);
    const auto preferences =
        watcher.awaitWindow(titled(u"Orvantile Preferences"_s), QDeadlineTimer(startPatience));
    watcher.close(preferences.handle);
    // A window that is still about to get the focus takes the keys that follow with it.
    watcher.awaitGone(preferences.handle);
    if (before.handle != XCB_NONE) {
        watcher.activate(before.handle);
    }
}

QStringList Stage::awaitCommandsOf(const Application& application) {
    QStringList others;
    const QDeadlineTimer deadline(startPatience);
    while (!deadline.hasExpired()) {
        injector.press(application.fenceKeys);
        const auto hud = hudWatcher.awaitNext(QDeadlineTimer(300ms));
        if (!hud) {
            continue;
        }
        if (hud->label != application.fenceLabel) {
            others.append(hud->label);
            continue;
        }
        hudWatcher.awaitHidden();
        hudWatcher.takeAll(); // further fences, pressed before the first was named
        return others;
    }
    throw std::runtime_error("the commands of " + application.program.toStdString() + " are not named; " +
                             product->standardError().toStdString());
}

QString Stage::fire(const QString& combination) {
    injector.press(combination);
    const auto hud = hudWatcher.awaitNext(QDeadlineTimer(2s));
    hudWatcher.awaitHidden();
    return hud ? hud->label : u"nothing"_s;
}

QStringList Stage::shownBy(const Application& application, const std::function<void()>& action) {
    action();
    return awaitCommandsOf(application);
}

} // namespace orvantile::test
