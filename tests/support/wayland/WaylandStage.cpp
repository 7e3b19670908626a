#include "support/wayland/WaylandStage.h"

#include <stdexcept>
#include <thread>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

/// Real applications on a busy machine take their time to start.
constexpr std::chrono::seconds startPatience{60};

/// The compositor tells only when asked.
constexpr auto interval = 20ms;

const QString preferences = u"Orvantile Preferences"_s;

} // namespace

WaylandStage::WaylandStage(const WaylandSessionOptions& options)
    : desktop(options),
      keyboard(
          std::make_unique<VirtualKeyboard>(u"us"_s, desktop.runtimeDirectory() % u'/' % desktop.display())),
      listener(desktop.accessibilityBusAddress()) {
    // A HUD that goes soon keeps the tests short; no sound server is wanted here.
    desktop.writeFile(u".config/orvantile/orvantile.ini"_s,
                      "[General]\ndisplaySeconds=0.3\nsoundEnabled=false\n");
    desktop.writeFile(u"notes.txt"_s, "first line\nsecond line\nthird line\n");
    desktop.writeFile(u"draft.txt"_s, "a draft\n");
    desktop.setVariable(u"GDK_BACKEND"_s, u"wayland"_s);
}

void WaylandStage::awaitFocus(const QString& title) {
    const QDeadlineTimer deadline(startPatience);
    while (!desktop.sway().focusedTitle().contains(title)) {
        if (deadline.hasExpired()) {
            throw std::runtime_error("no window “" + title.toStdString() + "” has the focus");
        }
        std::this_thread::sleep_for(interval);
    }
}

ChildProcess& WaylandStage::start(const WaylandApplication& application) {
    auto arguments = application.arguments;
    for (auto& argument : arguments) {
        if (argument.contains(u'.')) {
            argument = desktop.home() + u'/' + argument;
        }
    }
    auto& process = applications[application.program];
    process = desktop.start(application.program, arguments);
    awaitFocus(application.title);
    return *process;
}

void WaylandStage::focus(const QString& criterion, const QString& title) {
    desktop.sway().run(u'[' % criterion % u"] focus"_s);
    awaitFocus(title);
}

void WaylandStage::startOrvantile() {
    const auto before = desktop.sway().focusedTitle();
    product = desktop.start(QStringLiteral(ORVANTILE_PROGRAM));
    listener.attendTo(product->processIdentifier());
    awaitFocus(preferences);
    desktop.sway().run(u"[title=\"%1\"] kill"_s.arg(preferences));
    if (!before.isEmpty()) {
        awaitFocus(before);
    }
}

QStringList WaylandStage::awaitCommandsOf(const WaylandApplication& application) {
    QStringList others;
    const QDeadlineTimer deadline(startPatience);
    while (!deadline.hasExpired()) {
        keyboard->press(application.fenceKeys);
        const auto label = listener.awaitNext(QDeadlineTimer(300ms));
        if (!label) {
            continue;
        }
        if (*label != application.fenceLabel) {
            others.append(*label);
            continue;
        }
        listener.awaitHidden();
        while (listener.awaitNext(QDeadlineTimer(0))) { // further fences, pressed before the first was named
        }
        return others;
    }
    throw std::runtime_error("the commands of " + application.program.toStdString() + " are not named; " +
                             product->standardError().toStdString());
}

QString WaylandStage::fire(const QString& combination) {
    keyboard->press(combination);
    const auto label = listener.awaitNext(QDeadlineTimer(2s));
    listener.awaitHidden();
    return label.value_or(u"nothing"_s);
}

} // namespace orvantile::test
