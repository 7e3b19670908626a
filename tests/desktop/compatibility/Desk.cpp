#include "desktop/compatibility/Desk.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QSet>
#include <stdexcept>
#include <thread>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

constexpr auto startPatience = 90s;
constexpr auto settlePatience = 8s;
constexpr auto busyPatience = 3s;
constexpr auto glance = 40ms;
constexpr std::int64_t glanceTicks = 2; ///< half of a glance, in hundredths of a second
constexpr int attempts = 6;

void loadHelper(PrivateSession& session) {
    const auto folder = QStringLiteral(ORVANTILE_HELPERS);
    session.setVariable(u"QT_PLUGIN_PATH"_s, folder + u"/qt5:"_s + folder + u"/qt6"_s);
    session.setVariable(u"QT_QPA_GENERIC_PLUGINS"_s, u"orvantile"_s);
}

/// What the process has computed so far, in hundredths of a second.
std::int64_t processorTime(pid_t process) {
    QFile file(u"/proc/%1/stat"_s.arg(process));
    if (process <= 0 || !file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const auto contents = file.readAll();
    const auto fields = contents.sliced(contents.lastIndexOf(')') + 1).split(' ');
    constexpr qsizetype userTime = 12;
    return fields.size() <= userTime + 1 ? 0
                                         : fields[userTime].toLongLong() + fields[userTime + 1].toLongLong();
}

void writePages(const QString& path) {
    QPdfWriter writer(path);
    QPainter painter(&writer);
    painter.fillRect(100, 100, 500, 500, Qt::black);
    writer.newPage();
    painter.fillRect(300, 300, 500, 500, Qt::black);
    writer.newPage();
    painter.fillRect(500, 500, 500, 500, Qt::black);
}

} // namespace

Desk::Desk(const Program& program_) : program(program_), menus(scene.session(), program_) {
    auto& session = scene.session();
    loadHelper(session);
    for (const auto& [name, contents] : program.files) {
        session.writeFile(name, contents);
    }
    for (const auto& [name, value] : program.variables) {
        session.setVariable(name, value);
    }
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QDir(session.home()).mkdir(u"pictures"_s);
    for (const auto& name : {u"picture"_s, u"pictures/1"_s, u"pictures/2"_s, u"pictures/3"_s}) {
        picture.save(u"%1/%2.png"_s.arg(session.home(), name));
    }
    writePages(session.home() + u"/pages.pdf"_s);
}

void Desk::startOrvantile() {
    scene.startOrvantile();
}

void Desk::awaitIdle() {
    const auto process = scene.orvantile().processIdentifier();
    const QDeadlineTimer deadline(busyPatience);
    auto worked = processorTime(process);
    scene.huds().awaitHidden(); // it is drawn until then
    for (bool busy = true; busy && !deadline.hasExpired();) {
        std::this_thread::sleep_for(program.settle);
        const auto working = processorTime(process);
        busy = working - worked >= glanceTicks;
        worked = working;
    }
    settle();
}

void Desk::start() {
    menus.disconnect();
    application.reset();
    ++timesRestarted;
    QStringList arguments = program.arguments;
    arguments.replaceInStrings(u"~"_s, scene.session().home());
    QSet<xcb_window_t> before;
    for (const auto& window : scene.windows().windows()) {
        before.insert(window.handle);
    }
    menus.enterEnvironment();
    application = scene.session().start(program.command, arguments);
    menus.leaveEnvironment();
    const auto isMain = [&](const Window& window) {
        return !before.contains(window.handle) && ofClass(program.windowClass)(window);
    };
    main = scene.windows().awaitWindow(isMain, QDeadlineTimer(startPatience));
    for (const auto& keys : program.startKeys) {
        settle();
        scene.keys().press(keys);
    }
    // A greeting may have come before the main window, or instead of it.
    for (int attempt = 0; !chooseMain(isMain) || !tryToRestore(); ++attempt) {
        if (attempt == 3) {
            QStringList titles;
            for (const auto& window : scene.windows().windows()) {
                titles.append(window.className + u": "_s + window.title);
            }
            throw std::runtime_error("the main window of " + program.name.toStdString() +
                                     " does not come to rest; there are " +
                                     titles.join(u"; "_s).toStdString());
        }
    }
    if (program.opensMenusFirst) {
        openEachMenu();
    }
    if (!program.prepare.isEmpty()) {
        scene.keys().type(program.prepare);
        settle();
    }
}

/// Takes the largest window of the application.
bool Desk::chooseMain(const WindowWatcher::Predicate& fits) {
    settle();
    const auto area = [](const Window& each) { return each.frame.width() * each.frame.height(); };
    main = {};
    for (const auto& window : scene.windows().windows()) {
        if (fits(window) && (main.handle == XCB_NONE || area(window) > area(main))) {
            main = window;
        }
    }
    return main.handle != XCB_NONE;
}

bool Desk::restore() {
    settle();
    if (program.escapes && hasPopup()) {
        scene.keys().press(u"Escape"_s);
        settle();
    }
    if (application->isRunning() && tryToRestore()) {
        return false;
    }
    start();
    return true;
}

bool Desk::isAtRest() const {
    return scene.windows().activeWindow().handle == main.handle && scene.windows().menus().empty();
}

/// Something of the application over its window that is no menu, such as a search field.
bool Desk::hasPopup() const {
    const XConnection x(scene.session().display());
    return std::ranges::any_of(rootChildren(x), [&](xcb_window_t handle) {
        const auto window = lookAt(x, handle);
        return window.overrideRedirect && window.mapped && ofClass(program.windowClass)(window);
    });
}

Desk::Picture Desk::look() const {
    Picture picture;
    for (const auto& window : scene.windows().windows()) {
        picture.push_back(window.handle);
    }
    picture.push_back(XCB_NONE);
    for (const auto& menu : scene.windows().menus()) {
        picture.push_back(menu.handle);
    }
    picture.push_back(scene.windows().activeWindow().handle);
    return picture;
}

/// Programs don't tell when they have done what a key told them. They have when nothing on the screen has
/// changed for a while and they don't compute either.
void Desk::settle() const {
    const QDeadlineTimer deadline(settlePatience);
    const QDeadlineTimer busyDeadline(busyPatience);
    auto last = look();
    auto worked = processorTime(main.process);
    auto since = std::chrono::steady_clock::now();
    while (!deadline.hasExpired() && std::chrono::steady_clock::now() - since < program.settle) {
        std::this_thread::sleep_for(glance);
        auto next = look();
        const auto working = processorTime(main.process);
        const bool busy = working - worked >= glanceTicks && !busyDeadline.hasExpired();
        if (busy || next != last) {
            last = std::move(next);
            since = std::chrono::steady_clock::now();
        }
        worked = working;
    }
}

bool Desk::tryToRestore() {
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto windows = scene.windows().windows();
        const auto mainNow = std::ranges::find(windows, main.handle, &Window::handle);
        if (mainNow == windows.end()) {
            return false;
        }
        const bool menusOpen = !scene.windows().menus().empty();
        if (windows.size() == 1 && !menusOpen && isAtRest()) {
            main = *mainNow;
            return true;
        }
        if (menusOpen || attempt % 3 == 0) {
            scene.keys().press(u"Escape"_s);
        } else if (attempt % 3 == 2) {
            scene.keys().press(u"Return"_s); // a question that has no other way out
        } else {
            for (const auto& window : windows) {
                if (window.handle != main.handle) {
                    scene.windows().close(window.handle);
                }
            }
        }
        settle();
        if (scene.windows().windows().size() == 1 && !isAtRest()) {
            try {
                scene.windows().activate(main.handle);
            } catch (const std::runtime_error&) {
                return false;
            }
        }
    }
    return false;
}

/// Menus that are filled when they are opened, one after the other through the whole bar.
void Desk::openEachMenu() {
    scene.keys().press(u"F10"_s);
    settle();
    if (scene.windows().menus().empty()) {
        scene.keys().press(u"Down"_s);
        settle();
    }
    for (int menu = 0; menu < 9 && !scene.windows().menus().empty(); ++menu) {
        scene.keys().press(u"Right"_s);
        settle();
    }
    if (!tryToRestore()) {
        throw std::runtime_error("the menus of " + program.name.toStdString() + " do not close");
    }
}

} // namespace orvantile::test
