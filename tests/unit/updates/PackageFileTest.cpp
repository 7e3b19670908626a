#include "platform/linux/desktop/updates/PackageFile.h"

#include "unit/updates/SigningKey.h"

#include <QDir>
#include <QTemporaryDir>
#include <csignal>
#include <gmock/gmock.h>
#include <limits>
#include <sys/resource.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

class PackageFileTest : public ::testing::Test {
protected:
    [[nodiscard]] QStringList entries() const {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    std::variant<QString, UpdateFailure>
    keep(const QByteArray& written, qint64 length, const QByteArray& signature,
         const QUrl& url = QUrl(u"https://example.org/orvantile.deb"_s)) {
        PackageFile file(folder.path());
        EXPECT_FALSE(file.open(length));
        EXPECT_FALSE(file.append(written.first(written.size() / 2)));
        EXPECT_FALSE(file.append(written.sliced(written.size() / 2)));
        EXPECT_TRUE(entries().filter(u".deb"_s).isEmpty() || !kept.isEmpty())
            << "named before it was verified";
        auto result = file.keep(length, signature, PublicKey::parse(key.publicText()).value(), url);
        if (const auto* const path = std::get_if<QString>(&result)) {
            kept.append(*path);
        }
        return result;
    }

    QTemporaryDir folder;
    test::SigningKey key;
    QByteArray bytes = QByteArray("package ").repeated(10'000);
    QStringList kept;
};

TEST_F(PackageFileTest, keepsASignedPackageUnderItsName) {
    const auto result = keep(bytes, bytes.size(), key.sign(bytes));
    ASSERT_TRUE(std::holds_alternative<QString>(result));
    EXPECT_EQ(entries(), QStringList{u"orvantile.deb"_s});
    QFile file(std::get<QString>(result));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
    EXPECT_FALSE(file.permissions() &
                 (QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther | QFile::WriteOther));
    EXPECT_TRUE(file.permissions() & QFile::ReadOther) << "the installer is another user";
}

TEST_F(PackageFileTest, replacesNothing) {
    keep(bytes, bytes.size(), key.sign(bytes));
    const QByteArray other = "another";
    ASSERT_TRUE(std::holds_alternative<QString>(keep(other, other.size(), key.sign(other))));
    EXPECT_EQ(entries(), (QStringList{u"orvantile (1).deb"_s, u"orvantile.deb"_s}));
    QFile first(folder.filePath(u"orvantile.deb"_s));
    ASSERT_TRUE(first.open(QIODevice::ReadOnly));
    EXPECT_EQ(first.readAll(), bytes);
}

TEST_F(PackageFileTest, leavesNothingOfWhatItRefuses) {
    const auto signature = key.sign(bytes);
    EXPECT_EQ(std::get<UpdateFailure>(keep(bytes, bytes.size() + 1, signature)), UpdateFailure::wrongLength);
    EXPECT_EQ(std::get<UpdateFailure>(keep(bytes, bytes.size() - 1, signature)), UpdateFailure::wrongLength);
    EXPECT_EQ(std::get<UpdateFailure>(keep(bytes, bytes.size(), key.sign("other"))),
              UpdateFailure::wrongSignature);
    EXPECT_EQ(std::get<UpdateFailure>(keep(bytes, bytes.size(), {})), UpdateFailure::wrongSignature);
    EXPECT_TRUE(entries().isEmpty());
}

TEST_F(PackageFileTest, makesAMissingFolder) {
    PackageFile file(folder.filePath(u"a/b"_s));
    EXPECT_FALSE(file.open(1));
}

TEST_F(PackageFileTest, reportsAFolderThatTakesNothing) {
    QFile plain(folder.filePath(u"plain"_s));
    ASSERT_TRUE(plain.open(QIODevice::WriteOnly));
    EXPECT_EQ(PackageFile(plain.fileName()).open(1), UpdateFailure::storageUnwritable);
    EXPECT_EQ(PackageFile(plain.fileName() + u"/below"_s).open(1), UpdateFailure::storageUnwritable);
    EXPECT_EQ(PackageFile({}).open(1), UpdateFailure::storageUnwritable);
    EXPECT_EQ(PackageFile(u"/proc"_s).open(1), UpdateFailure::storageUnwritable);
}

TEST_F(PackageFileTest, reportsMissingSpaceBeforeAndWhileItWrites) {
    EXPECT_EQ(PackageFile(folder.path()).open(std::numeric_limits<qint64>::max()),
              UpdateFailure::storageFull);

    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, before.rlim_max};
    PackageFile file(folder.path());
    ASSERT_FALSE(file.open(100));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const auto failure = file.append(bytes);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, previous);
    EXPECT_TRUE(failure == UpdateFailure::storageFull || failure == UpdateFailure::storageUnwritable);
}

TEST_F(PackageFileTest, takesHarmlessNamesFromAddresses) {
    const auto name = [](const QString& url) { return PackageFile::nameFor(QUrl(url)); };
    EXPECT_EQ(name(u"https://example.org/d/orvantile_1.2-3~a+b_amd64.deb?x=y#z"_s),
              u"orvantile_1.2-3~a+b_amd64.deb"_s);
    EXPECT_EQ(name(u"https://example.org/"_s), u"orvantile-update"_s);
    EXPECT_EQ(name(u"https://example.org"_s), u"orvantile-update"_s);
    EXPECT_EQ(name(u"https://example.org/.bashrc"_s), u"bashrc"_s);
    EXPECT_EQ(name(u"https://example.org/-rf"_s), u"rf"_s);
    EXPECT_EQ(name(u"https://example.org/a%2F..%2F..%2Fb.deb"_s).contains(u'/'), false);
    EXPECT_EQ(name(u"https://example.org/.."_s), u"orvantile-update"_s);
    EXPECT_EQ(name(u"https://example.org/a%00%0Ab%20c.deb"_s), u"a__b_c.deb"_s);
    const auto longName = name(u"https://example.org/"_s + QString(500, u'a') + u".deb"_s);
    EXPECT_EQ(longName.size(), 120);
    EXPECT_TRUE(longName.endsWith(u".deb"_s));
}

} // namespace
} // namespace orvantile::platform::desktop
