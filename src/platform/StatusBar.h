#pragma once

#include "platform/Menu.h"

#include <QString>
#include <memory>
#include <optional>

namespace orvantile::platform {

/// A monochrome image of the system, tinted by the theme of the bar when it is a template.
struct SymbolImage {
    QString name;
    QString accessibilityDescription;
    bool isTemplate = false;

    friend bool operator==(const SymbolImage&, const SymbolImage&) = default;
};

/// An item of the status bar. Destroying it removes it. Main thread only.
class StatusItem {
public:
    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// Shows the image, or none.
    virtual void setImage(const std::optional<SymbolImage>& image) = 0;

    virtual void setMenu(std::shared_ptr<Menu> menu) = 0;
};

/// The status bar (notification area, tray). Main thread only.
class StatusBar {
public:
    StatusBar() = default;
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;
    virtual ~StatusBar() = default;

    /// A new item, as wide as its icon. Never null: where there is no bar, or not yet, the item waits for
    /// one.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> createItem() = 0;

    /// The system's symbol called `name`, or absent when there is none.
    [[nodiscard]] virtual std::optional<SymbolImage> symbolImage(const QString& name,
                                                                 const QString& accessibilityDescription) = 0;
};

} // namespace orvantile::platform
