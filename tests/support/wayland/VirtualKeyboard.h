#pragma once

#include <QString>
#include <cstdint>
#include <memory>

namespace orvantile::test {

/// A keyboard that a test makes on a compositor for as long as this object lives: programs take a moment to
/// accept a new one. Throws std::runtime_error when that cannot be had.
class VirtualKeyboard {
public:
    /// `layout` as XKB names it; `compositor` is the path of its socket, empty for the one that the
    /// environment names.
    explicit VirtualKeyboard(const QString& layout = QStringLiteral("us"), const QString& compositor = {});
    VirtualKeyboard(const VirtualKeyboard&) = delete;
    VirtualKeyboard& operator=(const VirtualKeyboard&) = delete;
    ~VirtualKeyboard();

    /// Presses and releases a combination such as "Ctrl+Shift+N" or "F5"; the last part is the key symbol's
    /// name on the first level of the layout.
    void press(const QString& combination);

    /// Presses and releases the keys of a text in small letters, one after the other.
    void type(const QString& text);

private:
    struct Protocol;
    void key(std::uint32_t code, bool pressed);

    std::unique_ptr<Protocol> protocol;
};

} // namespace orvantile::test
