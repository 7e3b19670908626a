#pragma once

#include "support/desktop/SessionBusCalls.h"

#include <QImage>
#include <QString>
#include <memory>

namespace orvantile::test {

/// What a test asks of a KWin over its session bus. Throws std::runtime_error with the reason when it
/// refuses.
class KWinControl {
public:
    explicit KWinControl(const QString& sessionBusAddress);

    void loadEffect(const char* name) const;
    void unloadEffect(const char* name) const;

    /// What is on the screens, in device pixels.
    [[nodiscard]] QImage screenshot() const;

private:
    std::unique_ptr<sd_bus, CloseBus> bus;
};

} // namespace orvantile::test
