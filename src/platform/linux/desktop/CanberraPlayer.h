#pragma once

#include <QByteArray>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>

struct ca_context;

namespace orvantile::platform::desktop {

/// Plays sound files through the desktop's sound server. Sounds overlap. Its calls block while the server
/// does, so it belongs on a thread of its own; it is not thread-safe.
class CanberraPlayer {
public:
    /// Starts the sound. `name` is what the server keeps it under, so that it is sent only once. Silent when
    /// there is no server; then it is looked for again after `patience` at the earliest.
    void play(const QByteArray& name, const std::filesystem::path& file);

private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds patience{500};

    struct Destroy {
        void operator()(ca_context* context) const;
    };

    [[nodiscard]] bool start(const QByteArray& name, const std::filesystem::path& file);
    [[nodiscard]] bool connect();

    std::unique_ptr<ca_context, Destroy> context;
    Clock::time_point notBefore;
    std::uint32_t lastIdentifier = 0;
};

} // namespace orvantile::platform::desktop
