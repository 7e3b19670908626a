#include "desktop/compatibility/Truth.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <array>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

constexpr auto answerPatience = 20s;

/// Without the marks that make a letter the mnemonic: "&Save", "保存(&S)".
QString withoutMarks(QString title) {
    static const QRegularExpression appended(u"\\(&[^&]\\)"_s);
    title.remove(appended);
    title.replace(u"&&"_s, u"\uFFFF"_s).remove(u'&').replace(u'\uFFFF', u'&');
    return title.simplified();
}

FileDescriptor connected(const QString& path) {
    sockaddr_un address{};
    const auto name = path.toLocal8Bit();
    if (static_cast<std::size_t>(name.size()) >= sizeof(address.sun_path)) {
        throw std::runtime_error("the path of a socket is too long");
    }
    address.sun_family = AF_UNIX;
    std::ranges::copy(name, address.sun_path);
    const QDeadlineTimer deadline(20s);
    while (!deadline.hasExpired()) {
        FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0) {
            return socket;
        }
        std::this_thread::sleep_for(50ms); // nothing tells when somebody listens
    }
    throw std::runtime_error("nobody tells what the menus show: " + path.toStdString());
}

} // namespace

Truth::Truth(PrivateSession& session_, const Program& program)
    : session(session_),
      source(program.truth),
      declared(program.declared),
      folder(session.home() + u"/.truth"_s) {
    QDir().mkpath(folder);
    if (const auto& [file, resource] = program.shortcutsWindow; !file.isEmpty()) {
        readShortcutsWindow(file, resource);
    }
}

Truth::~Truth() = default;

void Truth::enterEnvironment() {
    if (source == TruthSource::insideQt) {
        const auto folders = session.environment().value(u"QT_PLUGIN_PATH"_s);
        session.setVariable(u"QT_PLUGIN_PATH"_s, folders + u":"_s + QStringLiteral(ORVANTILE_TRUTH_PLUGINS) +
                                                     u"/qt5:"_s + QStringLiteral(ORVANTILE_TRUTH_PLUGINS) +
                                                     u"/qt6"_s);
        session.setVariable(u"QT_QPA_GENERIC_PLUGINS"_s, u"orvantile,menutruth"_s);
        session.setVariable(u"ORVANTILE_TRUTH_FOLDER"_s, folder);
    }
}

void Truth::leaveEnvironment() {
    if (source == TruthSource::insideQt) {
        session.setVariable(u"QT_QPA_GENERIC_PLUGINS"_s, u"orvantile"_s);
    }
}

void Truth::readShortcutsWindow(const QString& file, const QString& resource) {
    const auto lister =
        session.start(u"/usr/bin/python3"_s,
                      {QStringLiteral(ORVANTILE_TRUTH_FOLDER) + u"/shortcuts_window.py"_s, file, resource});
    for (const auto& entry : QJsonDocument::fromJson(lister->awaitLine().value_or(QByteArray())).array()) {
        declared.emplace_back(entry[u"title"_s].toString(), entry[u"keys"_s].toString());
    }
    if (declared.empty()) {
        throw std::runtime_error("no window of shortcuts in " + file.toStdString() + ": " +
                                 lister->standardError().toStdString());
    }
}

std::vector<MenuEntry> Truth::declaredEntries() const {
    std::vector<MenuEntry> entries;
    for (const auto& [title, keys] : declared) {
        entries.push_back({title, keys, {}, true});
    }
    return entries;
}

std::vector<MenuEntry> Truth::read(const Window& window) {
    if (!declared.empty()) {
        return declaredEntries();
    }
    connectTo(window);
    return entriesOf(
        ask({{u"ask"_s, u"read"_s}, {u"process"_s, window.process}, {u"title"_s, window.title}}));
}

std::vector<MenuEntry> Truth::again(const Window& window, const QString& keys) {
    if (source == TruthSource::accessibilityBus && declared.empty()) {
        return entriesOf(ask({{u"ask"_s, u"again"_s}, {u"keys"_s, keys}}));
    }
    auto entries = read(window);
    std::erase_if(entries, [&](const MenuEntry& entry) { return entry.keys != keys; });
    return entries;
}

std::vector<MenuEntry> Truth::triggered() {
    return entriesOf(ask({{u"ask"_s, u"triggered"_s}}));
}

void Truth::disconnect() {
    client = {};
    reader.reset();
}

void Truth::connectTo(const Window& window) {
    if (client.get() >= 0) {
        return;
    }
    if (source == TruthSource::insideQt) {
        client = connected(u"%1/%2"_s.arg(folder).arg(window.process));
        return;
    }
    const QString path = folder + u"/reader"_s;
    QFile::remove(path);
    reader = session.start(u"/usr/bin/python3"_s,
                           {QStringLiteral(ORVANTILE_TRUTH_FOLDER) + u"/accessible_menus.py"_s, path});
    client = connected(path);
}

QJsonObject Truth::ask(const QJsonObject& request) {
    const QByteArray line = QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n';
    if (::send(client.get(), line.constData(), static_cast<std::size_t>(line.size()), MSG_NOSIGNAL) !=
        line.size()) {
        throw std::runtime_error("the program no longer tells what its menus show");
    }
    QByteArray answer;
    const QDeadlineTimer deadline(answerPatience);
    while (!answer.endsWith('\n')) {
        std::array<char, 65536> buffer{};
        const auto count = awaitReadable(client.get(), deadline)
                               ? ::read(client.get(), buffer.data(), buffer.size())
                               : ssize_t{0};
        if (count <= 0) {
            throw std::runtime_error("no answer about what the menus show" +
                                     (reader ? ": " + reader->standardError().toStdString() : ""));
        }
        answer.append(buffer.data(), count);
    }
    return QJsonDocument::fromJson(answer).object();
}

std::vector<MenuEntry> Truth::entriesOf(const QJsonObject& answer) const {
    std::vector<MenuEntry> entries;
    for (const auto& item : answer[u"items"_s].toArray()) {
        const auto title = item[u"title"_s].toString();
        entries.push_back({source == TruthSource::insideQt ? withoutMarks(title) : title,
                           item[u"keys"_s].toString(), item[u"menu"_s].toString(),
                           item[u"enabled"_s].toBool(), item[u"allKeys"_s].toVariant().toStringList()});
    }
    return entries;
}

} // namespace orvantile::test
