#include "ScriptedPortal.h"

#include <QDBusVariant>
#include <stdexcept>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const QString name = u"org.freedesktop.portal.Desktop"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString interface = u"org.freedesktop.portal.Settings"_s;

QVariant boxed(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

} // namespace

ScriptedPortal::ScriptedPortal(const QString& bus)
    : connection(QDBusConnection::connectToBus(bus, u"scripted portal"_s)) {
    if (!connection.isConnected() || !connection.registerVirtualObject(path, this)) {
        throw std::runtime_error("no bus for the portal");
    }
}

ScriptedPortal::~ScriptedPortal() {
    QDBusConnection::disconnectFromBus(connection.name());
}

void ScriptedPortal::appear() {
    if (!connection.registerService(name)) {
        throw std::runtime_error("the portal's name is taken");
    }
}

void ScriptedPortal::disappear() {
    connection.unregisterService(name);
}

void ScriptedPortal::change(const Key& key, const QVariant& value) {
    values[key] = value;
    auto signal = QDBusMessage::createSignal(path, interface, u"SettingChanged"_s);
    signal << key.first << key.second << boxed(value);
    connection.send(signal);
}

void ScriptedPortal::resume() {
    hangs = false;
    for (const auto& message : std::exchange(kept, {})) {
        answer(message);
    }
}

bool ScriptedPortal::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
    if (message.interface() != interface) {
        return false;
    }
    ++asked;
    if (hangs) {
        kept.push_back(message);
    } else {
        answer(message);
    }
    return true;
}

void ScriptedPortal::answer(const QDBusMessage& message) {
    const bool old = message.member() == u"Read";
    if (old && knowsOnlyReadOne) {
        connection.send(message.createErrorReply(QDBusError::UnknownMethod, u"unknown"_s));
        return;
    }
    const auto arguments = message.arguments();
    const auto found = values.find({arguments.value(0).toString(), arguments.value(1).toString()});
    if (found == values.end()) {
        connection.send(
            message.createErrorReply(u"org.freedesktop.portal.Error.NotFound"_s, u"no such setting"_s));
        return;
    }
    connection.send(message.createReply(old ? boxed(boxed(found->second)) : boxed(found->second)));
}

} // namespace orvantile::test
