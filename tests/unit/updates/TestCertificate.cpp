#include "unit/updates/TestCertificate.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <stdexcept>

namespace orvantile::test {

using Qt::StringLiterals::operator""_s;

namespace {

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TestCertificate::TestCertificate() {
    const QTemporaryDir folder;
    const auto keyPath = folder.filePath(u"key.pem"_s);
    const auto certificatePath = folder.filePath(u"certificate.pem"_s);
    QProcess openssl;
    openssl.start(u"openssl"_s,
                  {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                   u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s, u"-days"_s, u"2"_s, u"-subj"_s,
                   u"/CN=localhost"_s, u"-addext"_s, u"subjectAltName=DNS:localhost,IP:127.0.0.1"_s,
                   u"-keyout"_s, keyPath, u"-out"_s, certificatePath});
    if (!openssl.waitForFinished() || openssl.exitCode() != 0) {
        throw std::runtime_error("openssl made no certificate: " +
                                 openssl.readAllStandardError().toStdString());
    }
    certificate = QSslCertificate(contents(certificatePath));
    key = QSslKey(contents(keyPath), QSsl::Ec);
    if (certificate.isNull() || key.isNull()) {
        throw std::runtime_error("the certificate that openssl made cannot be read");
    }
}

const TestCertificate& TestCertificate::shared() {
    static const TestCertificate one;
    return one;
}

} // namespace orvantile::test
