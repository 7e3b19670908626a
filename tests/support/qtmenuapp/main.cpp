// A program with menus, for either version of Qt. It says on standard output what happens in it: "ready" once
// its window is on the screen, then a line for each action that is triggered, with the time.
//   --fire N   presses the keys of New so often by itself, says "done" with the
//              processor time that one took, in nanoseconds, and ends
//   --watch    a filter of its own sees all shortcuts first and lets them pass
//   --swallow  … and keeps them
//   --reuse    puts a connection of its own in place of each socket for datagrams, and says "untouched" if
//   nothing
//              was sent there when it is done with --fire
#include <QAction>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPlainTextEdit>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <sys/socket.h>
#include <unistd.h>

namespace {

long long nanosecondsOf(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return now.tv_sec * 1'000'000'000LL + now.tv_nsec;
}

class MenuWindow final : public QMainWindow {
public:
    MenuWindow() {
        setWindowTitle(QStringLiteral("Menu Application"));
        auto* file = menuBar()->addMenu(QStringLiteral("&File"));
        create = &add(*file, QStringLiteral("&New"), QStringLiteral("Ctrl+N"));
        add(*file, QStringLiteral("Save &As…\tas you like"), QStringLiteral("Ctrl+Shift+S"));
        add(*file, QStringLiteral("&Locked"), QStringLiteral("Ctrl+L")).setEnabled(false);
        auto* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
        auto* more = edit->addMenu(QStringLiteral("&More"));
        add(*more, QStringLiteral("Find && Replace"), QStringLiteral("Ctrl+Alt+F"));
        add(*edit, QStringLiteral("保存(&S)"), QStringLiteral("Ctrl+J"));
        add(*edit, QStringLiteral("Comment"), QStringLiteral("Ctrl+K, Ctrl+C"));
        add(*edit, QStringLiteral("One of two"), QStringLiteral("Ctrl+D"));
        add(*edit, QStringLiteral("The other of two"), QStringLiteral("Ctrl+D"));
        add(*edit, QStringLiteral("Select All"), QStringLiteral("Ctrl+A"));
        add(*edit, QStringLiteral("Refresh"), QStringLiteral("F5"));
        add(*edit, QStringLiteral("Fence"), QStringLiteral("Ctrl+Shift+F12"));
        auto* withoutMenu = new QAction(QStringLiteral("In no menu"), this);
        withoutMenu->setShortcut(QKeySequence(QStringLiteral("Ctrl+H")));
        follow(*withoutMenu);
        addAction(withoutMenu);
        setCentralWidget(new QPlainTextEdit(this)); // takes Ctrl+A for itself
        resize(500, 300);
    }

    QAction& newAction() { return *create; }

private:
    QAction& add(QMenu& menu, const QString& text, const QString& keys) {
        auto* action = menu.addAction(text);
        action->setShortcut(QKeySequence(keys));
        follow(*action);
        return *action;
    }

    static void follow(QAction& action) {
        QObject::connect(&action, &QAction::triggered, &action, [&action] {
            std::printf("%lld %s\n", nanosecondsOf(CLOCK_MONOTONIC), qPrintable(action.text()));
            std::fflush(stdout);
        });
    }

    QAction* create = nullptr;
};

/// Looks for shortcuts of its own, as programs do.
class OwnFilter final : public QObject {
public:
    explicit OwnFilter(bool swallows_) : swallows(swallows_) {}

    bool eventFilter(QObject*, QEvent* event) override {
        return swallows && event->type() == QEvent::Shortcut;
    }

private:
    bool swallows;
};

/// Closes what it does not know and uses the numbers again, as programs do that go to the background.
class ReusedDescriptors {
public:
    ReusedDescriptors() {
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends.data()) != 0) {
            std::abort();
        }
        constexpr int mostDescriptors = 256;
        for (int descriptor = 3; descriptor < mostDescriptors; ++descriptor) {
            int type = 0;
            socklen_t size = sizeof(type);
            if (getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &type, &size) == 0 && type == SOCK_DGRAM) {
                dup2(ends[0], descriptor);
                ++reused;
            }
        }
    }

    [[nodiscard]] bool areUntouched() const {
        char byte = 0;
        return reused > 0 && recv(ends[1], &byte, 1, 0) < 0;
    }

private:
    std::array<int, 2> ends{};
    int reused = 0;
};

int fireRepeatedly(MenuWindow& window, int times) {
    int fired = 0;
    window.newAction().disconnect();
    QObject::connect(&window.newAction(), &QAction::triggered, &window, [&fired] { ++fired; });
    const auto before = nanosecondsOf(CLOCK_PROCESS_CPUTIME_ID);
    for (int count = 0; count < times; ++count) {
        QTest::keyClick(window.windowHandle(), Qt::Key_N, Qt::ControlModifier);
    }
    const auto used = nanosecondsOf(CLOCK_PROCESS_CPUTIME_ID) - before;
    std::printf("done %d %lld\n", fired, used / times);
    std::fflush(stdout);
    return fired == times ? 0 : 1;
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    const auto arguments = QApplication::arguments();
    OwnFilter filter(arguments.contains(QStringLiteral("--swallow")));
    if (arguments.contains(QStringLiteral("--watch")) || arguments.contains(QStringLiteral("--swallow"))) {
        app.installEventFilter(&filter);
    }
    MenuWindow window;
    window.show();
    if (!QTest::qWaitForWindowActive(&window, 20'000)) {
        std::fputs("the window does not become active\n", stderr);
        return 2;
    }
    std::puts("ready");
    std::fflush(stdout);
    if (const auto fire = arguments.indexOf(QStringLiteral("--fire")); fire >= 0) {
        std::optional<ReusedDescriptors> descriptors;
        if (arguments.contains(QStringLiteral("--reuse"))) {
            descriptors.emplace();
        }
        const int result = fireRepeatedly(window, arguments.value(fire + 1).toInt());
        std::puts(descriptors && descriptors->areUntouched() ? "untouched" : "");
        return result;
    }
    return QApplication::exec();
}
