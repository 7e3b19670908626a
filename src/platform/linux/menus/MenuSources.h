#pragma once

#include "platform/linux/a11y/MenuModel.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace orvantile::platform::menus {

/// Several sources of menus as one, the most exact first: the first one that knows what the keys mean in a
/// window decides, so each program's menus are taken from where they come with their accelerators. Main
/// thread only.
class MenuSources final : public a11y::MenuModel {
public:
    /// Whether there are menus at all is said by the first of `sources`, which must be there.
    explicit MenuSources(std::vector<std::unique_ptr<a11y::MenuModel>> sources);

    [[nodiscard]] bool isAvailable() const override;
    void follow(std::int32_t processIdentifier) override;
    void windowActivated(const session::ActiveWindow& window) override;
    void menuClosed() override;
    [[nodiscard]] a11y::MenuAnswer commandFor(const session::ActiveWindow& window,
                                              const keys::Candidates& candidates) override;

    /// Of the first source that knows accelerators, else of the one that knows most items.
    [[nodiscard]] a11y::MenuReach reach(std::int32_t processIdentifier) const override;

private:
    std::vector<std::unique_ptr<a11y::MenuModel>> sources;
};

} // namespace orvantile::platform::menus
