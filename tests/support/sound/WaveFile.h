#pragma once

#include <QString>
#include <cstdint>
#include <vector>

namespace orvantile::test {

/// A plain 16-bit WAV file.
struct WaveFile {
    int channels = 0;
    int rate = 0; ///< samples per second and channel
    std::vector<std::int16_t> samples{};

    /// Throws std::runtime_error when the file is not exactly a header of 44 bytes and its samples.
    [[nodiscard]] static WaveFile read(const QString& path);
};

} // namespace orvantile::test
