#pragma once

#include "support/desktop/HudWatcher.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/WindowWatcher.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace orvantile::test {

/// How an application is started and recognised.
struct Application {
    QString program;
    QStringList arguments;
    QString windowClass;

    /// A shortcut that is always enabled, changes nothing, and what it is called.
    QString fenceKeys;
    QString fenceLabel;
};

/// A private desktop with real applications and the program itself, driven by keys and judged by what is on
/// the screen.
class Stage {
public:
    explicit Stage(SessionOptions options = {});

    [[nodiscard]] PrivateSession& session() { return desktop; }

    [[nodiscard]] KeyInjector& keys() { return injector; }

    [[nodiscard]] WindowWatcher& windows() { return watcher; }

    [[nodiscard]] HudWatcher& huds() { return hudWatcher; }

    /// Starts an application and waits until its window has the focus.
    Window start(const Application& application);

    [[nodiscard]] ChildProcess& process(const Application& application);

    /// Starts the program itself, behind another one that starts it where `through` names one; its
    /// preferences are closed again.
    void startOrvantile(const QStringList& through = {});

    [[nodiscard]] ChildProcess& orvantile() { return *product; }

    /// Presses the application's fence until it is named: its commands are known from then on. Returns what
    /// else was shown meanwhile.
    QStringList awaitCommandsOf(const Application& application);

    /// Presses a combination and returns the label that is shown for it, or "nothing". Returns when the HUD
    /// has gone again: the application has long acted on the key by then, as it has between two keys of a
    /// person.
    QString fire(const QString& combination);

    /// Does something, then fires the application's fence until it is named, and returns what was shown
    /// besides: nothing when all is well.
    QStringList shownBy(const Application& application, const std::function<void()>& action);

private:
    PrivateSession desktop;
    KeyInjector injector;
    WindowWatcher watcher;
    HudWatcher hudWatcher;
    std::unique_ptr<ChildProcess> product;
    std::map<QString, std::unique_ptr<ChildProcess>> applications;
};

extern const Application mousepad;
extern const Application geany;
extern const Application thunar;
extern const Application writer;
extern const Application gimp;

} // namespace orvantile::test
