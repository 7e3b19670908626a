#pragma once

#include "platform/linux/desktop/FileDescriptor.h"
#include "platform/linux/keys/Accelerator.h"
#include "platform/linux/wayland/SeatKeymap.h"

#include <QFileSystemWatcher>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

struct input_event;

namespace orvantile::platform::wayland {

/// Reads keyboards as devices, where the user may do so anyway. Nothing is done to get that right. What is
/// pressed while another session is in front is not looked at, and what types text goes no further than here.
/// Main thread only.
class KeyboardDevices {
public:
    /// How devices are found and judged.
    struct Access {
        QString folder; ///< of the devices; empty for none
        std::function<bool(int descriptor)> isKeyboard;
        std::function<bool()> isSessionActive; ///< whether the keys are meant for this session
    };

    /// The devices of the machine, for the login session that the environment names; none without one.
    [[nodiscard]] static Access ofSystem();

    /// `keymap` must outlive it.
    KeyboardDevices(Access access, const SeatKeymap& keymap);
    KeyboardDevices(const KeyboardDevices&) = delete;
    KeyboardDevices& operator=(const KeyboardDevices&) = delete;
    ~KeyboardDevices() = default;

    /// What a key that was pressed may mean, never empty.
    std::function<void(const keys::Candidates&)> onPressed;

    /// Keyboards can be read now, or cannot any more.
    std::function<void()> onChanged;

    /// Opens what can be opened, and keeps looking.
    void start();

    /// Handles what has arrived so far.
    void drain();

    [[nodiscard]] bool hears() const { return !devices.empty(); }

private:
    struct Device {
        desktop::FileDescriptor descriptor;
        std::unique_ptr<QSocketNotifier> readable;
    };

    void look();
    void open(const QString& path);
    void read(const QString& path);
    void handle(const input_event& event, int descriptor);
    void renewState(int descriptor);

    Access access;
    const SeatKeymap& keymap;
    std::map<QString, Device> devices; ///< by path
    SeatKeymap::State state;
    std::uint64_t stateOf = 0; ///< the edition of the keymap
    QFileSystemWatcher watcher;
    QTimer looking; ///< devices get their permissions a moment after they appear
};

} // namespace orvantile::platform::wayland
