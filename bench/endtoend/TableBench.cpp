// From an application's coming to the front to a complete table of its accelerators.

#include "platform/linux/a11y/BusMenuModel.h"
#include "support/Samples.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/WindowWatcher.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <cstdio>
#include <cstdlib>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;
using platform::a11y::BusMenuModel;

struct Program {
    QString name;
    QStringList arguments;
    QString className;
};

/// Turns the main loop until `done` holds; false after a while without it.
bool turnUntil(const std::function<bool()>& done) {
    QDeadlineTimer deadline(test::patience);
    while (!done() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    return done();
}

void measure(const test::PrivateSession& session, const Program& program, int rounds) {
    const auto process = session.start(program.name, program.arguments);
    const test::WindowWatcher windows(session.display());
    const auto window = windows.awaitActive(test::ofClass(program.className));
    Samples times;
    platform::a11y::MenuReach count;
    for (int round = 0; round < rounds; ++round) {
        BusMenuModel model([] {});
        bool complete = false;
        model.onTableComplete = [&](std::int32_t) { complete = true; };
        if (!turnUntil([&] { return model.isAvailable(); })) {
            throw std::runtime_error("the accessibility bus does not answer");
        }
        QElapsedTimer clock;
        clock.start();
        model.follow(window.process);
        if (!turnUntil([&] { return complete; })) {
            throw std::runtime_error("the table never became complete: " + program.name.toStdString());
        }
        times.add(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        count = model.reach(window.process);
    }
    times.print(
        u"%1: %2 items, %3 accelerators, ms"_s.arg(program.name).arg(count.items).arg(count.accelerators));
}

int run(int rounds) {
    test::PrivateSession session;
    session.setVariable(u"SAL_USE_VCLPLUGIN"_s, u"gtk3"_s);
    session.enter();
    int argc = 1;
    char name[] = "bench";
    char* argv[] = {name, nullptr};
    const QApplication app(argc, argv);
    const auto text = session.writeFile(u"notes.txt"_s, "Some text.\n");
    Samples::printHeader();
    measure(session, {u"mousepad"_s, {u"--disable-server"_s, text}, u"mousepad"_s}, rounds);
    measure(session, {u"geany"_s, {u"-i"_s, text}, u"geany"_s}, rounds);
    measure(session,
            {u"soffice"_s,
             {u"--writer"_s, u"--norestore"_s, u"--nologo"_s, u"--nofirststartwizard"_s},
             u"libreoffice-writer"_s},
            rounds);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    try {
        return orvantile::bench::run(argc > 1 ? std::atoi(argv[1]) : 20);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
