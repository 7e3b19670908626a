#include "platform/linux/helper/HelperSocket.h"

#include "helper/qt/HelperMessage.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace orvantile::platform::helper {
namespace {

using desktop::FileDescriptor;
using orvantile::helper::MessageHeader;
using Qt::StringLiterals::operator""_s;

class HelperSocketTest : public ::testing::Test {
protected:
    HelperSocketTest() : path(folder.filePath(u"org.orvantile.Orvantile/helper"_s)) {}

    [[nodiscard]] HelperSocket listen() {
        return {folder.path().toStdString(), [this](std::int32_t process, const HelperReport& report) {
                    reports.push_back({process, report});
                }};
    }

    /// Sends to the socket by name; the error number, or 0.
    int send(const QByteArray& bytes) const {
        const FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
        const auto receiver = address();
        const auto sent = ::sendto(socket.get(), bytes.constData(), static_cast<std::size_t>(bytes.size()),
                                   MSG_DONTWAIT | MSG_NOSIGNAL, reinterpret_cast<const sockaddr*>(&receiver),
                                   sizeof(receiver));
        return sent < 0 ? errno : 0;
    }

    [[nodiscard]] sockaddr_un address() const {
        sockaddr_un receiver{};
        receiver.sun_family = AF_UNIX;
        const auto name = path.toUtf8();
        std::copy(name.begin(), name.end(), receiver.sun_path);
        return receiver;
    }

    static QByteArray menus(std::uint8_t open) {
        MessageHeader header;
        header.kind = MessageHeader::menusChanged;
        header.openMenus = open;
        return {reinterpret_cast<const char*>(&header), sizeof(header)};
    }

    void await(std::size_t count) const {
        const QDeadlineTimer deadline(5000);
        while (reports.size() < count && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        }
        EXPECT_EQ(reports.size(), count);
    }

    QTemporaryDir folder;
    QString path;
    std::vector<std::pair<std::int32_t, HelperReport>> reports;
};

TEST_F(HelperSocketTest, hearsReportsWithTheirProcess) {
    const auto socket = listen();
    ASSERT_TRUE(socket.isOpen());
    EXPECT_EQ(send(menus(3)), 0);
    await(1);
    EXPECT_EQ(reports[0].first, getpid());
    EXPECT_EQ(reports[0].second.openMenus, 3);
}

TEST_F(HelperSocketTest, livesInAFolderThatIsPrivate) {
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"org.orvantile.Orvantile"_s));
    const auto private_ = folder.filePath(u"org.orvantile.Orvantile"_s).toStdString();
    ASSERT_EQ(::chmod(private_.c_str(), 0777), 0);
    const auto socket = listen();
    ASSERT_TRUE(socket.isOpen());

    struct stat status {};

    ASSERT_EQ(::stat(private_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0700U);
}

TEST_F(HelperSocketTest, goesWithTheObject) {
    {
        const auto socket = listen();
        EXPECT_TRUE(QFileInfo::exists(path));
    }
    EXPECT_FALSE(QFileInfo::exists(path));
    EXPECT_EQ(send(menus(0)), ENOENT);
}

TEST_F(HelperSocketTest, theLatestCopyHearsAndKeepsHearing) {
    auto first =
        std::make_unique<HelperSocket>(folder.path().toStdString(), [](std::int32_t, const HelperReport&) {
            ADD_FAILURE() << "the first has heard";
        });
    const auto second = listen();
    ASSERT_TRUE(second.isOpen());
    first.reset();
    EXPECT_EQ(send(menus(1)), 0);
    await(1);
}

TEST_F(HelperSocketTest, isInactiveWhereItsNameIsTakenByAnythingElse) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(path));
    EXPECT_FALSE(listen().isOpen()) << "a folder";
    ASSERT_TRUE(QDir().rmdir(path));
    ASSERT_EQ(::mkfifo(path.toUtf8().constData(), 0600), 0);
    EXPECT_FALSE(listen().isOpen()) << "a pipe";
    EXPECT_TRUE(QFileInfo::exists(path)) << "and leaves it there";
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_TRUE(listen().isOpen());
}

TEST_F(HelperSocketTest, isInactiveWithoutAUsableRuntimeDirectory) {
    const auto ignore = [](std::int32_t, const HelperReport&) {};
    EXPECT_FALSE(HelperSocket("", ignore).isOpen());
    EXPECT_FALSE(HelperSocket("relative", ignore).isOpen());
    EXPECT_FALSE(HelperSocket("/nowhere/at/all", ignore).isOpen());
    EXPECT_FALSE(HelperSocket(folder.filePath(QString(100, u'x')).toStdString(), ignore).isOpen());
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"elsewhere"_s));
    ASSERT_TRUE(QFile::link(folder.filePath(u"elsewhere"_s), folder.filePath(u"org.orvantile.Orvantile"_s)));
    EXPECT_FALSE(listen().isOpen()) << "a link in place of the folder";
}

TEST_F(HelperSocketTest, dropsWhatIsNoMessageAndHearsTheNext) {
    const auto socket = listen();
    EXPECT_EQ(send({}), 0);
    EXPECT_EQ(send("nonsense"), 0);
    EXPECT_EQ(send(QByteArray(100'000, 'x')), 0);
    EXPECT_EQ(send(menus(0) + "tail"), 0);
    EXPECT_EQ(send(menus(7)), 0);
    await(1);
    EXPECT_EQ(reports[0].second.openMenus, 7);
}

TEST_F(HelperSocketTest, refusesDescriptorsThatAreSentAlong) {
    const auto socket = listen();
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
    const FileDescriptor reading(ends[0]);
    {
        const FileDescriptor writing(ends[1]);
        const FileDescriptor sender(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
        auto receiver = address();
        auto bytes = menus(1);
        iovec part{bytes.data(), static_cast<std::size_t>(bytes.size())};
        alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
        msghdr message{};
        message.msg_name = &receiver;
        message.msg_namelen = sizeof(receiver);
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        auto* header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof(int));
        *reinterpret_cast<int*>(CMSG_DATA(header)) = writing.get();
        ASSERT_GT(::sendmsg(sender.get(), &message, MSG_DONTWAIT), 0);
    }
    EXPECT_EQ(send(menus(2)), 0);
    await(1);
    EXPECT_EQ(reports[0].second.openMenus, 2);
    char byte = 0;
    EXPECT_EQ(::read(reading.get(), &byte, 1), 0) << "nobody holds the other end any more";
}

TEST_F(HelperSocketTest, sendersNeverWait) {
    const auto socket = listen(); // which nobody reads now
    int error = 0;
    int accepted = 0;
    while (accepted < 100'000 && error == 0) {
        error = send(menus(1));
        accepted += error == 0 ? 1 : 0;
    }
    EXPECT_EQ(error, EAGAIN);
    await(static_cast<std::size_t>(accepted));
}

} // namespace
} // namespace orvantile::platform::helper
