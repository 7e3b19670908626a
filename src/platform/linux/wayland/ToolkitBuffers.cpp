#include "platform/linux/wayland/ToolkitBuffers.h"

#include <QEvent>
#include <QGuiApplication>
#include <QString>
#include <memory>

namespace orvantile::platform::wayland {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr auto variable = "QT_WAYLAND_CLIENT_BUFFER_INTEGRATION";
constexpr auto nothing = "none"; // no such thing exists

QtMessageHandler& previousHandler() {
    static QtMessageHandler handler = nullptr; // a handler can be handed nothing
    return handler;
}

/// The toolkit complains that there is no such thing.
void dropComplaint(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (!text.contains(u"client buffer integration"_s)) {
        previousHandler()(type, context, text);
    }
}

/// The variable is read once, before the first window is seen.
class FirstWindow final : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Expose) {
            qunsetenv(variable);
            deleteLater();
            qGuiApp->removeEventFilter(this);
        }
        return false;
    }
};

} // namespace

void drawWithoutGraphicsHardware() {
    if (!qEnvironmentVariableIsSet(variable)) {
        qputenv(variable, nothing);
        previousHandler() = qInstallMessageHandler(dropComplaint);
    }
}

void forgetGraphicsHardware() {
    if (qgetenv(variable) == nothing) {
        auto filter = std::make_unique<FirstWindow>();
        filter->setParent(qGuiApp);
        qGuiApp->installEventFilter(filter.release());
    }
}

} // namespace orvantile::platform::wayland
