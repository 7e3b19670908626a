#include "trace/Turns.h"

#include <QAbstractEventDispatcher>

namespace orvantile::trace {

Turns::Turns() {
    const auto* loop = QAbstractEventDispatcher::instance();
    QObject::connect(loop, &QAbstractEventDispatcher::awake, &context, [this] { turn.emplace(Step::turn); });
    QObject::connect(loop, &QAbstractEventDispatcher::aboutToBlock, &context, [this] { turn.reset(); });
}

} // namespace orvantile::trace
