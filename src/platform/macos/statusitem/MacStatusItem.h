#pragma once

#import <AppKit/AppKit.h>

#include "platform/StatusBar.h"
#include "platform/macos/statusitem/StatusMenu.h"
#include "platform/macos/statusitem/SymbolImages.h"

// For Objective-C++ files only.
namespace orvantile::platform::macos {

/// An item of the system status bar, as wide as its image.
class MacStatusItem final : public StatusItem {
public:
    explicit MacStatusItem(std::shared_ptr<SymbolImages> images);
    MacStatusItem(const MacStatusItem&) = delete;
    MacStatusItem& operator=(const MacStatusItem&) = delete;
    ~MacStatusItem() override;

    void setImage(const std::optional<SymbolImage>& image) override;
    void setMenu(std::shared_ptr<Menu> menu) override;

private:
    std::shared_ptr<SymbolImages> images;
    NSStatusItem* item;
    std::shared_ptr<StatusMenu> menu;
};

} // namespace orvantile::platform::macos
