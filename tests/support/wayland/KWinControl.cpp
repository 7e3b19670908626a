#include "support/wayland/KWinControl.h"

#include "support/desktop/Deadline.h"
#include "support/desktop/FileDescriptor.h"

#include <array>
#include <fcntl.h>
#include <map>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace orvantile::test {
namespace {

constexpr auto service = "org.kde.KWin";

struct FreeMessage {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

using Message = std::unique_ptr<sd_bus_message, FreeMessage>;

/// The numbers of a dictionary of variants.
std::map<std::string, unsigned> numbersIn(sd_bus_message* message) {
    std::map<std::string, unsigned> found;
    sd_bus_message_enter_container(message, 'a', "{sv}");
    while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
        const char* name = nullptr;
        unsigned value = 0;
        sd_bus_message_read(message, "s", &name);
        const char* type = nullptr;
        sd_bus_message_peek_type(message, nullptr, &type);
        if (std::string_view(type) == "u") {
            sd_bus_message_read(message, "v", "u", &value);
            found[name] = value;
        } else {
            sd_bus_message_skip(message, "v");
        }
        sd_bus_message_exit_container(message);
    }
    return found;
}

QByteArray readAll(int descriptor) {
    QByteArray all;
    std::array<char, 65536> part{};
    const QDeadlineTimer deadline(patience);
    while (awaitReadable(descriptor, deadline)) {
        const auto count = ::read(descriptor, part.data(), part.size());
        if (count <= 0) {
            return all;
        }
        all.append(part.data(), count);
    }
    throw std::runtime_error("the picture of the screen does not come");
}

} // namespace

KWinControl::KWinControl(const QString& sessionBusAddress) {
    sd_bus* opened = nullptr;
    sd_bus_new(&opened);
    bus.reset(opened);
    if (sd_bus_set_address(opened, sessionBusAddress.toLatin1().constData()) < 0 ||
        sd_bus_set_bus_client(opened, 1) < 0 || sd_bus_start(opened) < 0) {
        throw std::runtime_error("no session bus");
    }
}

void KWinControl::loadEffect(const char* name) const {
    sd_bus_message* reply = nullptr;
    const int result = sd_bus_call_method(bus.get(), service, "/Effects", "org.kde.kwin.Effects",
                                          "loadEffect", nullptr, &reply, "s", name);
    const Message owned(reply);
    int loaded = 0;
    if (result < 0 || sd_bus_message_read(reply, "b", &loaded) < 0 || loaded == 0) {
        throw std::runtime_error(std::string("KWin cannot load the effect ") + name);
    }
}

void KWinControl::unloadEffect(const char* name) const {
    if (sd_bus_call_method(bus.get(), service, "/Effects", "org.kde.kwin.Effects", "unloadEffect", nullptr,
                           nullptr, "s", name) < 0) {
        throw std::runtime_error(std::string("KWin cannot unload the effect ") + name);
    }
}

QImage KWinControl::screenshot() const {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    sd_bus_error error = SD_BUS_ERROR_NULL;
    sd_bus_message* reply = nullptr;
    const int result =
        sd_bus_call_method(bus.get(), service, "/org/kde/KWin/ScreenShot2", "org.kde.KWin.ScreenShot2",
                           "CaptureWorkspace", &error, &reply, "a{sv}h", 0, writing.get());
    const Message owned(reply);
    const std::string reason = error.message != nullptr ? error.message : "";
    sd_bus_error_free(&error);
    if (result < 0) {
        throw std::runtime_error("KWin gives no picture of the screen: " + reason);
    }
    writing = FileDescriptor();
    auto numbers = numbersIn(reply);
    const auto pixels = readAll(reading.get());
    if (static_cast<std::size_t>(pixels.size()) < std::size_t{numbers["stride"]} * numbers["height"]) {
        throw std::runtime_error("the picture of the screen is incomplete");
    }
    return QImage(reinterpret_cast<const uchar*>(pixels.constData()), static_cast<int>(numbers["width"]),
                  static_cast<int>(numbers["height"]), static_cast<int>(numbers["stride"]),
                  static_cast<QImage::Format>(numbers["format"]))
        .convertToFormat(QImage::Format_RGB32);
}

} // namespace orvantile::test
