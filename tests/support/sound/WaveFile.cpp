#include "support/sound/WaveFile.h"

#include <QFile>
#include <cstring>
#include <stdexcept>

namespace orvantile::test {
namespace {

template <typename Number>
Number at(const QByteArray& bytes, qsizetype offset) {
    Number result{};
    std::memcpy(&result, bytes.constData() + offset, sizeof result);
    return result;
}

} // namespace

WaveFile WaveFile::read(const QString& path) {
    constexpr qsizetype header = 44;
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        throw std::runtime_error("cannot read " + path.toStdString());
    }
    const auto bytes = file.readAll();
    if (bytes.size() < header || bytes.first(4) != "RIFF" || bytes.sliced(8, 8) != "WAVEfmt " ||
        at<std::uint16_t>(bytes, 20) != 1 || at<std::uint16_t>(bytes, 34) != 16 ||
        bytes.sliced(36, 4) != "data" || at<std::uint32_t>(bytes, 40) != bytes.size() - header) {
        throw std::runtime_error("not a plain wave file: " + path.toStdString());
    }
    WaveFile wave{.channels = at<std::uint16_t>(bytes, 22), .rate = at<std::int32_t>(bytes, 24)};
    for (auto offset = header; offset + 1 < bytes.size(); offset += 2) {
        wave.samples.push_back(at<std::int16_t>(bytes, offset));
    }
    return wave;
}

} // namespace orvantile::test
