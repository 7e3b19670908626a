#include "desktop/launch/RunningCopy.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const auto title = u"Orvantile Preferences"_s;

constexpr std::uint32_t iconicState = 3;

SessionOptions withoutWindowManager(SessionOptions options) {
    options.windowManager = WindowManager::none;
    return options;
}

} // namespace

RunningCopy::RunningCopy(SessionOptions options)
    : desktop(withoutWindowManager(options)),
      watcher(desktop.display()) {
    desktop.writeFile(u".config/kwinrc"_s, "[Windows]\nFocusStealingPreventionLevel=4\n");
    desktop.writeFile(u".config/xfce4/xfconf/xfce-perchannel-xml/xfwm4.xml"_s,
                      R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfwm4" version="1.0"><property name="general" type="empty">
<property name="prevent_focus_stealing" type="bool" value="true"/>
<property name="activate_action" type="string" value="none"/>
</property></channel>
)");
    desktop.startWindowManager(options.windowManager);
    startAnew();
}

std::unique_ptr<ChildProcess> RunningCopy::launch() const {
    return desktop.start(QStringLiteral(ORVANTILE_EXECUTABLE));
}

void RunningCopy::startAnew() {
    running = launch();
    window = watcher.awaitActive(titled(title));
}

void RunningCopy::typeElsewhere() {
    editor = desktop.start(u"mousepad"_s, {u"--disable-server"_s, desktop.writeFile(u"notes.txt"_s, "\n")});
    const auto blank = watcher.awaitWindow(ofProcess(editor->processIdentifier()));
    watcher.activate(blank.handle);
    KeyInjector(desktop.display()).type(u"some text"_s);
    // It marks its title when the text has been changed.
    watcher.awaitActive(
        [&](const Window& active) { return active.handle == blank.handle && active.title.startsWith(u'*'); });
}

void RunningCopy::minimise() const {
    const XConnection x(desktop.display());
    x.select(window.handle, XCB_EVENT_MASK_PROPERTY_CHANGE);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window.handle;
    message.type = x.atom("WM_CHANGE_STATE");
    message.data.data32[0] = iconicState;
    xcb_send_event(x.get(), 0, x.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    const auto minimised = [&] {
        const auto state = x.numbers(window.handle, "WM_STATE");
        return !state.empty() && state.front() == iconicState;
    };
    if (!x.await(minimised, {}, QDeadlineTimer(patience))) {
        throw std::runtime_error("the preferences cannot be minimised");
    }
}

void RunningCopy::awaitPreferencesInFront() const {
    const auto active = watcher.awaitActive(titled(title));
    const XConnection x(desktop.display());
    x.select(x.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    const auto inFront = [&] {
        const auto stacked = x.numbers(x.root(), "_NET_CLIENT_LIST_STACKING");
        return !stacked.empty() && stacked.back() == active.handle;
    };
    if (!x.await(inFront, {}, QDeadlineTimer(patience))) {
        throw std::runtime_error("the preferences have the focus but are covered");
    }
}

std::ptrdiff_t RunningCopy::preferencesWindows() const {
    const auto all = watcher.windows();
    return std::ranges::count_if(all, titled(title));
}

} // namespace orvantile::test
