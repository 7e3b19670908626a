#include "MenuTruth.h"

#include <QGenericPlugin>
#include <QTimer>

namespace orvantile::test {

/// How the toolkit finds it: by the key that QT_QPA_GENERIC_PLUGINS names.
class TruthPlugin final : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "truth.json")

public:
    QObject* create(const QString& name, const QString&) override {
        return name == QLatin1String("menutruth") ? new MenuTruth(this) : nullptr;
    }
};

} // namespace orvantile::test

#include "TruthPlugin.moc"
