#pragma once

#include <QPoint>
#include <QString>
#include <cstdint>
#include <initializer_list>
#include <memory>

namespace orvantile::test {

/// The keyboard and the mouse of a KWin that was told to let anybody play them. Throws std::runtime_error
/// when that cannot be had.
class KWinInput {
public:
    /// `compositor`: the path of its socket.
    explicit KWinInput(const QString& compositor);
    KWinInput(const KWinInput&) = delete;
    KWinInput& operator=(const KWinInput&) = delete;
    ~KWinInput();

    /// Presses keys one after the other and releases them the other way round. As the kernel numbers them.
    void press(std::initializer_list<std::uint32_t> keys);

    /// Clicks at a place, in points.
    void click(QPoint place);

private:
    struct Protocol;

    std::unique_ptr<Protocol> protocol;
};

} // namespace orvantile::test
