#include "platform/linux/desktop/statusitem/NotifierItem.h"

#include "platform/linux/desktop/launch/LaunchToken.h"

#include <QtEndian>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

constexpr auto itemPath = "/StatusNotifierItem";
constexpr auto itemInterface = "org.kde.StatusNotifierItem";

/// Rows of 32-bit pixels, not premultiplied, most significant byte first.
int appendImages(sd_bus_message* message, const std::vector<QImage>& images) {
    sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "(iiay)");
    for (const auto& image : images) {
        const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
        std::vector<std::uint32_t> pixels(static_cast<std::size_t>(plain.width()) *
                                          static_cast<std::size_t>(plain.height()));
        std::memcpy(pixels.data(), plain.constBits(), pixels.size() * sizeof(std::uint32_t));
        qToBigEndian<std::uint32_t>(pixels.data(), static_cast<qsizetype>(pixels.size()), pixels.data());
        sd_bus_message_open_container(message, SD_BUS_TYPE_STRUCT, "iiay");
        sd_bus_message_append(message, "ii", plain.width(), plain.height());
        sd_bus_message_append_array(message, 'y', pixels.data(), pixels.size() * sizeof(std::uint32_t));
        sd_bus_message_close_container(message);
    }
    return sd_bus_message_close_container(message);
}

} // namespace

/// The methods and properties as the bus calls them.
struct NotifierItemMethods {
    static NotifierItem& self(void* data) { return *static_cast<NotifierItem*>(data); }

    static int showMenu(sd_bus_message* call, void* data, sd_bus_error*) {
        int x = 0;
        int y = 0;
        if (const int result = sd_bus_message_read(call, "ii", &x, &y); result < 0) {
            return result;
        }
        self(data).showMenu({x, y});
        return sd_bus_reply_method_return(call, "");
    }

    static int takeToken(sd_bus_message* call, void*, sd_bus_error*) {
        const char* token = nullptr;
        if (const int result = sd_bus_message_read(call, "s", &token); result < 0) {
            return result;
        }
        LaunchToken::ofBar(token).putIntoEnvironment();
        return sd_bus_reply_method_return(call, "");
    }

    static int ignore(sd_bus_message* call, void*, sd_bus_error*) {
        return sd_bus_reply_method_return(call, "");
    }

    /// Properties that never change, by name.
    static int constant(sd_bus*, const char*, const char*, const char* name, sd_bus_message* reply, void*,
                        sd_bus_error*) {
        const std::string_view property(name);
        if (property == "Category") {
            return sd_bus_message_append(reply, "s", "ApplicationStatus");
        }
        if (property == "Id") {
            return sd_bus_message_append(reply, "s", "orvantile");
        }
        if (property == "Status") {
            return sd_bus_message_append(reply, "s", "Active");
        }
        if (property == "WindowId") {
            return sd_bus_message_append(reply, "i", 0);
        }
        if (property == "ItemIsMenu") {
            return sd_bus_message_append(reply, "b", 1);
        }
        return sd_bus_message_append(reply, "s", "");
    }

    static int noImages(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                        sd_bus_error*) {
        return sd_bus_message_append(reply, "a(iiay)", 0);
    }

    static int menuPath(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* data,
                        sd_bus_error*) {
        return sd_bus_message_append(reply, "o", self(data).menuPath.c_str());
    }

    static int title(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* data,
                     sd_bus_error*) {
        return sd_bus_message_append(reply, "s", self(data).icon.description.toUtf8().constData());
    }

    static int iconName(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* data,
                        sd_bus_error*) {
        return sd_bus_message_append(reply, "s", self(data).icon.name.toUtf8().constData());
    }

    static int iconImages(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* data,
                          sd_bus_error*) {
        return appendImages(reply, self(data).icon.images);
    }

    static int toolTip(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void* data,
                       sd_bus_error*) {
        return sd_bus_message_append(reply, "(sa(iiay)ss)", "", 0,
                                     self(data).icon.description.toUtf8().constData(), "");
    }

    static constexpr std::uint64_t open = SD_BUS_VTABLE_UNPRIVILEGED;
    static const sd_bus_vtable* table();
};

const sd_bus_vtable* NotifierItemMethods::table() {
    static const auto entries = std::to_array<sd_bus_vtable>({
        SD_BUS_VTABLE_START(0),
        SD_BUS_PROPERTY("Category", "s", constant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
        SD_BUS_PROPERTY("Id", "s", constant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
        SD_BUS_PROPERTY("Title", "s", title, 0, 0),
        SD_BUS_PROPERTY("Status", "s", constant, 0, 0),
        SD_BUS_PROPERTY("WindowId", "i", constant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
        SD_BUS_PROPERTY("IconThemePath", "s", constant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
        SD_BUS_PROPERTY("Menu", "o", menuPath, 0, SD_BUS_VTABLE_PROPERTY_CONST),
        SD_BUS_PROPERTY("ItemIsMenu", "b", constant, 0, SD_BUS_VTABLE_PROPERTY_CONST),
        SD_BUS_PROPERTY("IconName", "s", iconName, 0, 0),
        SD_BUS_PROPERTY("IconPixmap", "a(iiay)", iconImages, 0, 0),
        SD_BUS_PROPERTY("IconAccessibleDesc", "s", title, 0, 0),
        SD_BUS_PROPERTY("OverlayIconName", "s", constant, 0, 0),
        SD_BUS_PROPERTY("OverlayIconPixmap", "a(iiay)", noImages, 0, 0),
        SD_BUS_PROPERTY("AttentionIconName", "s", constant, 0, 0),
        SD_BUS_PROPERTY("AttentionIconPixmap", "a(iiay)", noImages, 0, 0),
        SD_BUS_PROPERTY("AttentionMovieName", "s", constant, 0, 0),
        SD_BUS_PROPERTY("ToolTip", "(sa(iiay)ss)", toolTip, 0, 0),
        SD_BUS_METHOD("ContextMenu", "ii", "", showMenu, open),
        SD_BUS_METHOD("Activate", "ii", "", showMenu, open),
        SD_BUS_METHOD("SecondaryActivate", "ii", "", ignore, open),
        SD_BUS_METHOD("Scroll", "is", "", ignore, open),
        SD_BUS_METHOD("ProvideXdgActivationToken", "s", "", takeToken, open),
        SD_BUS_SIGNAL("NewTitle", "", 0),
        SD_BUS_SIGNAL("NewIcon", "", 0),
        SD_BUS_SIGNAL("NewAttentionIcon", "", 0),
        SD_BUS_SIGNAL("NewOverlayIcon", "", 0),
        SD_BUS_SIGNAL("NewToolTip", "", 0),
        SD_BUS_SIGNAL("NewStatus", "s", 0),
        SD_BUS_VTABLE_END,
    });
    return entries.data();
}

NotifierItem::NotifierItem(SessionBus& bus_, std::string menuPath_, ShowMenu showMenu_)
    : bus(bus_),
      menuPath(std::move(menuPath_)),
      showMenu(std::move(showMenu_)) {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(bus.handle(), &slot, itemPath, itemInterface, NotifierItemMethods::table(),
                             this);
    object.reset(slot);
}

void NotifierItem::setIcon(const NotifierIcon& icon_) {
    if (icon == icon_) {
        return;
    }
    icon = icon_;
    for (const char* name : {"NewIcon", "NewTitle", "NewToolTip"}) {
        sd_bus_message* signal = nullptr;
        sd_bus_message_new_signal(bus.handle(), &signal, itemPath, itemInterface, name);
        bus.send(MessageHandle(signal));
    }
}

} // namespace orvantile::platform::desktop
