#pragma once

#include "support/desktop/KeyInjector.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/WindowWatcher.h"

#include <memory>

namespace orvantile::bench {

/// A private desktop with a real editor that has the focus, and the program on demand.
class EditorDesktop {
public:
    EditorDesktop();

    [[nodiscard]] test::PrivateSession& session() { return desktop; }

    [[nodiscard]] test::KeyInjector& keys() { return injector; }

    [[nodiscard]] test::WindowWatcher& windows() { return watcher; }

    [[nodiscard]] pid_t editorProcess() const { return editor->processIdentifier(); }

    /// Starts the program, closes its preferences and waits until it names the editor's "Select All".
    pid_t startOrvantile();

    void stopOrvantile() { orvantile.reset(); }

private:
    test::PrivateSession desktop;
    test::KeyInjector injector;
    test::WindowWatcher watcher;
    std::unique_ptr<test::ChildProcess> editor;
    std::unique_ptr<test::ChildProcess> orvantile;
    xcb_window_t editorWindow = XCB_NONE;
};

} // namespace orvantile::bench
