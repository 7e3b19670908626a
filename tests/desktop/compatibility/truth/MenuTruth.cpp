#include "MenuTruth.h"

#include <QAction>
#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QMenuBar>
#include <QMetaMethod>
#include <QSet>
#include <QSocketNotifier>
#include <QThread>
#include <algorithm>
#include <array>
#include <cstring>
#include <dlfcn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace orvantile::test {
namespace {

QJsonArray& triggeredActions() {
    static QJsonArray actions;
    return actions;
}

bool livesInMenu(const QAction& action) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const auto owners = action.associatedObjects();
#else
    const auto owners = action.associatedWidgets();
#endif
    return std::any_of(owners.begin(), owners.end(),
                       [](const QObject* owner) { return qobject_cast<const QMenu*>(owner) != nullptr; });
}

/// A menu shows the first shortcut, or what follows a tab in the text.
QJsonObject describe(const QAction& action, const QString& menu) {
    const QString text = action.text();
    QJsonArray keys;
    for (const auto& shortcut : action.shortcuts()) {
        keys.append(shortcut.toString(QKeySequence::PortableText));
    }
    return {{QStringLiteral("title"), text.section(QLatin1Char('\t'), 0, 0)},
            {QStringLiteral("keys"), action.shortcut().toString(QKeySequence::PortableText)},
            {QStringLiteral("allKeys"), keys},
            {QStringLiteral("enabled"), action.isEnabled() && action.isVisible()},
            {QStringLiteral("menu"), menu}};
}

/// Private to the toolkit, for debuggers: called before the slots of each signal.
struct SignalSpies {
    using Begin = void (*)(QObject*, int, void**);
    using End = void (*)(QObject*, int);
    Begin signalBegins = nullptr;
    Begin slotBegins = nullptr;
    End signalEnds = nullptr;
    End slotEnds = nullptr;
};

int indexOfTriggered() {
    const QMetaObject& meta = QAction::staticMetaObject;
    const int method = meta.indexOfSignal("triggered(bool)");
    int index = -1;
    for (int each = 0; each <= method; ++each) {
        index += meta.method(each).methodType() == QMetaMethod::Signal ? 1 : 0;
    }
    return index;
}

void signalBegins(QObject* sender, int signal, void**) {
    static const int triggered = indexOfTriggered();
    if (signal != triggered || QThread::currentThread() != QCoreApplication::instance()->thread()) {
        return;
    }
    if (const auto* action = qobject_cast<const QAction*>(sender);
        action != nullptr && livesInMenu(*action)) {
        triggeredActions().append(describe(*action, {}));
    }
}

void watchSignals() {
    using Register = void (*)(SignalSpies*);
    static SignalSpies spies;
    spies.signalBegins = signalBegins;
    if (const auto function = reinterpret_cast<Register>(
            dlsym(RTLD_DEFAULT, "_Z32qt_register_signal_spy_callbacksP21QSignalSpyCallbackSet"))) {
        function(&spies);
    }
}

class Collector {
public:
    void take(const QList<QAction*>& actions, const QString& menu) {
        for (const QAction* action : actions) {
            if (action->isSeparator() || seen.contains(action)) {
                continue;
            }
            seen.insert(action);
            const auto* submenu = qobject_cast<const QMenu*>(menuOf(*action));
            if (submenu != nullptr) {
                take(submenu->actions(), menu.isEmpty() ? plain(action->text()) : menu);
            } else if (!action->text().isEmpty()) {
                items.append(describe(*action, menu));
            }
        }
    }

    QJsonArray items;

private:
    static QString plain(QString text) { return text.remove(QLatin1Char('&')); }

    static const QObject* menuOf(const QAction& action) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        return action.menu<QMenu*>();
#else
        return action.menu();
#endif
    }

    QSet<const QAction*> seen;
};

/// The menus of the window in front: those of its menu bar first, then those behind buttons.
QJsonObject readMenus() {
    const QWidget* window = QApplication::activeWindow();
    Collector collector;
    const auto widgets = QApplication::allWidgets();
    for (const QWidget* widget : widgets) {
        if (const auto* bar = qobject_cast<const QMenuBar*>(widget); bar && bar->window() == window) {
            collector.take(bar->actions(), {});
        }
    }
    for (const QWidget* widget : widgets) {
        const auto* menu = qobject_cast<const QMenu*>(widget);
        if (menu != nullptr && menu->parentWidget() != nullptr && menu->parentWidget()->window() == window) {
            collector.take(menu->actions(), menu->title().remove(QLatin1Char('&')));
        }
    }
    return {{QStringLiteral("found"), window != nullptr}, {QStringLiteral("items"), collector.items}};
}

} // namespace

MenuTruth::MenuTruth(QObject* parent) : QObject(parent) {
    const QByteArray path = qgetenv("ORVANTILE_TRUTH_FOLDER") + '/' + QByteArray::number(getpid());
    sockaddr_un address{};
    if (!path.startsWith('/') || static_cast<std::size_t>(path.size()) >= sizeof(address.sun_path) ||
        qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr) {
        return;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        listen(listener, 1) != 0) {
        return;
    }
    connect(new QSocketNotifier(listener, QSocketNotifier::Read, this), &QSocketNotifier::activated, this,
            [this] { accept(); });
    watchSignals();
}

void MenuTruth::accept() {
    client = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    auto* notifier = new QSocketNotifier(client, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        std::array<char, 4096> buffer{};
        const auto count = ::read(client, buffer.data(), buffer.size());
        if (count <= 0) {
            notifier->setEnabled(false);
            return;
        }
        pending.append(buffer.data(), static_cast<int>(count));
        answer();
    });
}

void MenuTruth::answer() {
    for (auto end = pending.indexOf('\n'); end >= 0; end = pending.indexOf('\n')) {
        const auto request = QJsonDocument::fromJson(pending.left(end)).object();
        pending.remove(0, end + 1);
        QJsonObject reply;
        if (request.value(QStringLiteral("ask")).toString() == QStringLiteral("triggered")) {
            reply = {{QStringLiteral("found"), true}, {QStringLiteral("items"), triggeredActions()}};
            triggeredActions() = {};
        } else {
            reply = readMenus();
        }
        const QByteArray bytes = QJsonDocument(reply).toJson(QJsonDocument::Compact) + '\n';
        qsizetype written = 0;
        while (written < bytes.size()) {
            const auto count = ::send(client, bytes.constData() + written,
                                      static_cast<std::size_t>(bytes.size() - written), MSG_NOSIGNAL);
            if (count <= 0) {
                return;
            }
            written += count;
        }
    }
}

} // namespace orvantile::test
