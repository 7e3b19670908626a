#include "platform/linux/wayland/KeyboardDevices.h"

#include "platform/linux/keys/KeyCandidates.h"

#include <QDir>
#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <systemd/sd-login.h>
#include <unistd.h>
#include <utility>

namespace orvantile::platform::wayland {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr std::uint32_t codeOffset = 8; ///< between the codes of the kernel and those of XKB
constexpr std::chrono::milliseconds settling{500};
constexpr std::size_t mostDevices = 32;

/// One bit for each key.
using KeyBits = std::array<unsigned char, KEY_MAX / 8 + 1>;

bool has(const KeyBits& bits, unsigned key) {
    return (unsigned{bits[key / 8]} >> (key % 8) & 1U) != 0;
}

bool hasLetters(int descriptor) {
    KeyBits bits{};
    return ioctl(descriptor, EVIOCGBIT(EV_KEY, sizeof bits), bits.data()) >= 0 && has(bits, KEY_A) &&
           has(bits, KEY_Z) && has(bits, KEY_ENTER);
}

} // namespace

KeyboardDevices::Access KeyboardDevices::ofSystem() {
    const auto session = qgetenv("XDG_SESSION_ID").toStdString();
    return {.folder = session.empty() ? QString() : u"/dev/input"_s,
            .isKeyboard = hasLetters,
            .isSessionActive = [session] { return sd_session_is_active(session.c_str()) > 0; }};
}

KeyboardDevices::KeyboardDevices(Access access_, const SeatKeymap& keymap_)
    : access(std::move(access_)),
      keymap(keymap_) {
    looking.setSingleShot(true);
    looking.setInterval(settling);
    QObject::connect(&looking, &QTimer::timeout, &looking, [this] { look(); });
    QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &watcher, [this] { looking.start(); });
}

void KeyboardDevices::start() {
    if (!access.folder.isEmpty() && QDir(access.folder).exists()) {
        watcher.addPath(access.folder);
        look();
    }
}

void KeyboardDevices::look() {
    const bool before = hears();
    const QDir folder(access.folder);
    for (const auto& name : folder.entryList({u"event*"_s}, QDir::System | QDir::Files)) {
        const auto path = folder.filePath(name);
        if (!devices.contains(path) && devices.size() < mostDevices) {
            open(path);
        }
    }
    if (hears() != before && onChanged) {
        onChanged();
    }
}

void KeyboardDevices::open(const QString& path) {
    desktop::FileDescriptor file(::open(path.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen() || !access.isKeyboard(file.get())) {
        return;
    }
    auto notifier = std::make_unique<QSocketNotifier>(file.get(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [this, path] { read(path); });
    devices.emplace(path, Device{std::move(file), std::move(notifier)});
}

void KeyboardDevices::drain() {
    std::vector<QString> paths;
    for (const auto& [path, device] : devices) {
        paths.push_back(path);
    }
    for (const auto& path : paths) {
        read(path);
    }
}

void KeyboardDevices::read(const QString& path) {
    const auto device = devices.find(path);
    if (device == devices.end()) {
        return;
    }
    std::array<input_event, 64> events{};
    const int descriptor = device->second.descriptor.get();
    const auto bytes = ::read(descriptor, events.data(), sizeof events);
    if (bytes <= 0) {
        if (bytes < 0 && (errno == EAGAIN || errno == EINTR)) {
            return;
        }
        device->second.readable->setEnabled(false);
        device->second.readable.release()->deleteLater(); // it is what is calling
        devices.erase(device);
        if (!hears() && onChanged) {
            onChanged();
        }
        return;
    }
    const auto count = static_cast<std::size_t>(bytes) / sizeof(input_event);
    for (std::size_t index = 0; index < count; ++index) {
        handle(events[index], descriptor);
    }
}

void KeyboardDevices::handle(const input_event& event, int descriptor) {
    constexpr int released = 0;
    constexpr int pressed = 1;
    const bool lost = event.type == EV_SYN && event.code == SYN_DROPPED;
    if (lost || !state || stateOf != keymap.edition()) {
        renewState(descriptor);
    }
    if (lost || !state || event.type != EV_KEY || (event.value != pressed && event.value != released)) {
        return;
    }
    const auto code = event.code + codeOffset;
    if (event.value == pressed && access.isSessionActive()) {
        if (const auto candidates = keys::keyCandidates(state.get(), code);
            !candidates.empty() && onPressed) {
            onPressed(candidates);
        }
    }
    xkb_state_update_key(state.get(), code, event.value == pressed ? XKB_KEY_DOWN : XKB_KEY_UP);
}

/// Begins with the keys that are held down now.
void KeyboardDevices::renewState(int descriptor) {
    state = keymap.makeState();
    stateOf = keymap.edition();
    KeyBits held{};
    if (!state || ioctl(descriptor, EVIOCGKEY(sizeof held), held.data()) < 0) {
        return;
    }
    for (unsigned key = 0; key < KEY_MAX; ++key) {
        if (has(held, key)) {
            xkb_state_update_key(state.get(), key + codeOffset, XKB_KEY_DOWN);
        }
    }
}

} // namespace orvantile::platform::wayland
