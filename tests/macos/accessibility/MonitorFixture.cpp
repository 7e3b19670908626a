#include "macos/accessibility/MonitorFixture.h"

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr std::int64_t shift = 1;
constexpr std::int64_t control = 4;
constexpr std::int64_t noCommand = 8;

std::vector<FakeMenuItem> editorMenus() {
    const std::vector<FakeMenuItem> recent{{.title = u"Notes.txt"_s}, {.title = u"Clear Menu"_s}};
    return {
        {.title = u"File"_s,
         .submenu = {{.title = u"Open Recent"_s, .submenu = recent},
                     {.title = u"Save"_s, .character = u"s"_s},
                     {.title = u"Save As…"_s, .character = u"s"_s, .modifiers = shift},
                     {.title = u""_s, .character = u"u"_s}}},
        {.title = u"Edit"_s,
         .submenu = {{.title = u"Delete"_s, .character = u"\b"_s, .glyph = 23},
                     {.title = u"Next Pane"_s, .modifiers = control | noCommand, .glyph = 122}}},
    };
}

std::vector<FakeMenuItem> browserMenus() {
    return {{.title = u"File"_s, .submenu = {{.title = u"New Tab"_s, .character = u"t"_s}}}};
}

} // namespace

MonitorFixture::MonitorFixture()
    : editor(fake, editorProcess, editorMenus()),
      browser(fake, browserProcess, browserMenus()),
      platform(platform::makeNullPlatform()) {
    auto workspace_ = std::make_unique<FakeWorkspace>(std::make_shared<QStringList>());
    workspace = workspace_.get();
    platform->workspace = std::move(workspace_);
    platform->scheduler = std::make_unique<MainQueueScheduler>();
    platform->accessibility = std::make_unique<platform::macos::MacAccessibilityClient>();
    monitor = std::make_shared<ShortcutMonitor>(*platform);
    monitor->onAction = [this](std::optional<QString> shortcut, const QString& title) {
        reports.push_back({std::move(shortcut), title});
    };
}

MonitorFixture::~MonitorFixture() {
    fake.turnMainQueue(); // what is still there holds the monitor
    monitor.reset();
    EXPECT_EQ(fake.liveObjects(), 0) << "something has not been released";
    EXPECT_EQ(fake.sourcesOnMainLoop(), 0);
}

} // namespace orvantile::test
