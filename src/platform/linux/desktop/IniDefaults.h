#pragma once

#include "platform/UserDefaults.h"
#include "platform/linux/desktop/AssignmentWriter.h"

#include <filesystem>
#include <map>

namespace orvantile::platform::desktop {

/// The user's settings in the section `[General]` of an INI file that can also be edited by hand.
///
/// The file is replaced as a whole at each assignment, so that it is complete whenever the process is killed.
/// A worker thread does it; `set` waits for it as long as that is imperceptible, which on a disk that works
/// is until the assignment is in the file. When the disk hangs, the program runs on and the file follows.
/// Assignments that cannot be written stay in memory and are tried again with the next one and every half
/// minute.
///
/// A replacement is forced to the medium once assignments have paused, not each time: that costs tens of
/// milliseconds, does nothing for a process that is killed, and a power cut before then leaves the former
/// file with file systems that order data before names (ext4, btrfs).
class IniDefaults final : public UserDefaults {
public:
    explicit IniDefaults(const std::filesystem::path& file);

    /// The folder for the user's configuration files.
    [[nodiscard]] static std::filesystem::path configurationFolder();

    /// `orvantile/orvantile.ini` in the user's configuration folder.
    [[nodiscard]] static std::filesystem::path userFile();

    void registerDefaults(const std::vector<std::pair<QString, DefaultsValue>>& values) override;
    [[nodiscard]] bool boolForKey(const QString& key) const override;
    [[nodiscard]] double doubleForKey(const QString& key) const override;
    [[nodiscard]] std::optional<QString> stringForKey(const QString& key) const override;
    void set(const QString& key, const DefaultsValue& value) override;

    /// Waits at most a second for assignments that are not in the file yet. For the end of the program.
    void synchronize() { writer.synchronize(); }

private:
    template <typename Value>
    [[nodiscard]] std::optional<Value> find(const QString& key) const;

    std::map<QString, DefaultsValue> registered;
    std::map<QString, DefaultsValue> stored;
    AssignmentWriter writer;
};

} // namespace orvantile::platform::desktop
