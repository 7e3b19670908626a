// Whatever is wrong around the helper, the program it lives in does its work.

#include "desktop/helper/HelperStage.h"

#include "support/QtPrinting.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstring>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// No window manager is needed: the programs here draw nowhere.
SessionOptions bare() {
    return {.windowManager = WindowManager::none, .sessionBus = false, .accessibility = false};
}

class HarmlessTest : public ::testing::TestWithParam<int> {
protected:
    HarmlessTest() {
        loadHelper(session);
        session.setVariable(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        QDir().mkpath(QFileInfo(socket).path());
    }

    /// What the program has written to standard error, without what the platform without a screen says of
    /// itself.
    static std::vector<std::string> complaints(const ChildProcess& program) {
        std::vector<std::string> lines;
        for (const auto& line : program.standardError().split('\n')) {
            if (!line.isEmpty() && line != "This plugin does not support propagateSizeHints()") {
                lines.push_back(line.toStdString());
            }
        }
        return lines;
    }

    /// The program presses New so often; it has to fire as often, write nothing to standard error and end
    /// well.
    void expectUnharmed(int times = 200) {
        const auto program =
            session.start(menuApplication(GetParam()).program, {u"--fire"_s, QString::number(times)});
        EXPECT_EQ(program->awaitLine(), "ready");
        const auto done = program->awaitLine(QDeadlineTimer(std::chrono::seconds(60)));
        ASSERT_TRUE(done.has_value()) << program->standardError().toStdString();
        EXPECT_THAT(done->toStdString(), StartsWith("done " + std::to_string(times) + ' '));
        EXPECT_EQ(program->awaitExit(), 0);
        EXPECT_THAT(complaints(*program), IsEmpty());
    }

    /// A socket of that name; of datagrams unless told otherwise. Nobody reads from it.
    FileDescriptor makeSocket(int type = SOCK_DGRAM) const {
        FileDescriptor made(::socket(AF_UNIX, type | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const auto name = socket.toUtf8();
        std::copy(name.begin(), name.end(), address.sun_path);
        if (::bind(made.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
            ADD_FAILURE() << "cannot bind: " << std::strerror(errno);
        }
        return made;
    }

    PrivateSession session{bare()};
    QString socket = helperSocket(session);
};

TEST_P(HarmlessTest, reportsWhereThereIsNoScreen) {
    const auto receiver = makeSocket();
    expectUnharmed(3);
    int received = 0;
    std::array<char, 2048> bytes{};
    while (::recv(receiver.get(), bytes.data(), bytes.size(), 0) > 0) {
        ++received;
    }
    EXPECT_EQ(received, 3) << "one message for each action: the helper is there";
}

TEST_P(HarmlessTest, withoutAReceiver) {
    expectUnharmed();
}

TEST_P(HarmlessTest, withAReceiverThatHasDied) {
    makeSocket();
    ASSERT_TRUE(QFileInfo::exists(socket));
    expectUnharmed();
}

TEST_P(HarmlessTest, withAReceiverThatNeverReads) {
    const auto receiver = makeSocket();
    expectUnharmed(10'000);
}

TEST_P(HarmlessTest, withASocketOfAnotherKind) {
    const auto receiver = makeSocket(SOCK_STREAM);
    ::listen(receiver.get(), 1);
    expectUnharmed();
}

TEST_P(HarmlessTest, withAFolderInPlaceOfTheSocket) {
    QDir().mkpath(socket);
    expectUnharmed();
}

TEST_P(HarmlessTest, withAPipeInPlaceOfTheSocket) {
    ASSERT_EQ(::mkfifo(socket.toUtf8().constData(), 0600), 0);
    expectUnharmed();
}

TEST_P(HarmlessTest, withALoopOfLinksInPlaceOfTheSocket) {
    ASSERT_TRUE(QFile::link(socket, socket));
    expectUnharmed();
}

TEST_P(HarmlessTest, withASocketThatMayNotBeWrittenTo) {
    const auto receiver = makeSocket();
    ASSERT_EQ(::chmod(socket.toUtf8().constData(), 0), 0);
    expectUnharmed();
}

TEST_P(HarmlessTest, withoutARuntimeDirectory) {
    session.setVariable(u"XDG_RUNTIME_DIR"_s, u"/nowhere/%1"_s.arg(QString(200, u'x')));
    const auto program = session.start(menuApplication(GetParam()).program, {u"--fire"_s, u"200"_s});
    EXPECT_EQ(program->awaitLine(), "ready");
    EXPECT_EQ(program->awaitExit(), 0);
}

TEST_P(HarmlessTest, whenItIsNamedTwice) {
    session.setVariable(u"QT_QPA_GENERIC_PLUGINS"_s, u"orvantile,orvantile"_s);
    const auto receiver = makeSocket();
    expectUnharmed(1);
    std::array<char, 2048> bytes{};
    EXPECT_GT(::recv(receiver.get(), bytes.data(), bytes.size(), 0), 0);
    EXPECT_LT(::recv(receiver.get(), bytes.data(), bytes.size(), 0), 0) << "reported twice";
}

TEST_P(HarmlessTest, whenTheProgramUsesItsDescriptorForSomethingElse) {
    const auto receiver = makeSocket();
    const auto program =
        session.start(menuApplication(GetParam()).program, {u"--reuse"_s, u"--fire"_s, u"50"_s});
    EXPECT_EQ(program->awaitLine(), "ready");
    const auto done = program->awaitLine();
    EXPECT_TRUE(done && done->startsWith("done 50 "));
    EXPECT_EQ(program->awaitLine(), "untouched");
    EXPECT_EQ(program->awaitExit(), 0);
}

TEST_P(HarmlessTest, inAProgramWithoutWidgets) {
    const auto receiver = makeSocket();
    const auto program =
        session.start(u"%1%2"_s.arg(QStringLiteral(ORVANTILE_WINDOW_APPLICATION)).arg(GetParam()));
    EXPECT_EQ(program->awaitLine(), "done 100");
    EXPECT_EQ(program->awaitExit(), 0);
    EXPECT_THAT(complaints(*program), IsEmpty());
    std::array<char, 2048> bytes{};
    EXPECT_LT(::recv(receiver.get(), bytes.data(), bytes.size(), 0), 0);
}

/// The toolkit itself says that it has not found the plugin, and goes on.
TEST_P(HarmlessTest, whereThereIsOnlyTheOneForAnotherVersion) {
    const auto expectGoesOn = [&](const QString& folder) {
        loadHelper(session, {folder});
        const auto program = session.start(menuApplication(GetParam()).program, {u"--fire"_s, u"200"_s});
        EXPECT_EQ(program->awaitLine(), "ready");
        EXPECT_THAT(program->awaitLine()->toStdString(), StartsWith("done 200 "));
        EXPECT_EQ(program->awaitExit(), 0);
        EXPECT_THAT(complaints(*program), ElementsAre("No such plugin for spec \"orvantile\""));
    };
    expectGoesOn(helperFolder(11 - GetParam()));
    const QString broken = session.home() + u"/broken"_s;
    QFile whole(helperFolder(GetParam()) + u"/generic/orvantile.so"_s);
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const auto bytes = whole.readAll();
    session.writeFile(u"broken/generic/orvantile.so"_s, bytes.first(4096));
    expectGoesOn(broken);
    session.writeFile(u"broken/generic/orvantile.so"_s, "no library at all");
    expectGoesOn(broken);
}

INSTANTIATE_TEST_SUITE_P(Qt, HarmlessTest, ::testing::Values(ORVANTILE_QT_VERSIONS),
                         [](const auto& version) { return std::to_string(version.param); });

/// The library itself: what it is linked to and how large it is.
TEST(HelperLibraryTest, bringsNoWidgetsAlong) {
    for (const int version : {ORVANTILE_QT_VERSIONS}) {
        QFile library(helperFolder(version) + u"/generic/orvantile.so"_s);
        ASSERT_TRUE(library.open(QIODevice::ReadOnly));
        const auto bytes = library.readAll();
        EXPECT_TRUE(bytes.contains(QByteArray("libQt" + QByteArray::number(version) + "Gui.so")));
        EXPECT_FALSE(bytes.contains("libQt6Widgets"));
        EXPECT_FALSE(bytes.contains("libasan"));
    }
}

} // namespace
} // namespace orvantile::test
