#pragma once

#include "platform/Appearance.h"

#include <memory>

namespace orvantile::platform::macos {

/// The effective appearance of the application object, which must exist.
class MacAppearance final : public Appearance {
public:
    MacAppearance();
    MacAppearance(const MacAppearance&) = delete;
    MacAppearance& operator=(const MacAppearance&) = delete;
    ~MacAppearance() override;

    [[nodiscard]] bool isDark() const override;
    [[nodiscard]] Token observeChanges(std::function<void()> handler) override;

private:
    class Observation;
    std::unique_ptr<Observation> observation;
};

} // namespace orvantile::platform::macos
