#include "helper/qt/ActionReporter.h"

#include <QtGui/QGenericPlugin>

namespace orvantile::helper {

/// How the toolkit finds the reporter: by the key that QT_QPA_GENERIC_PLUGINS names.
class HelperPlugin final : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "orvantile.json")

public:
    QObject* create(const QString& name, const QString&) override {
        if (name != QLatin1String("orvantile")) {
            return nullptr;
        }
        // Named twice, it still reports once.
        return children().isEmpty() ? new ActionReporter(this) : new QObject(this);
    }
};

} // namespace orvantile::helper

#include "HelperPlugin.moc"
