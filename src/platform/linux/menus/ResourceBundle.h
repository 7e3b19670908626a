#pragma once

#include <QByteArray>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvantile::platform::menus {

/// The files that GLib programs carry inside: a GVDB hash table of paths, as glib-compile-resources writes
/// it. Bytes that nobody vouches for: what does not fit is not there.
class ResourceBundle {
public:
    explicit ResourceBundle(QByteArray bytes);

    /// The contents of the files whose path `wanted` accepts, in no certain order.
    [[nodiscard]] std::vector<QByteArray>
    files(const std::function<bool(std::string_view path)>& wanted) const;

private:
    [[nodiscard]] std::optional<std::uint32_t> word(std::size_t offset) const;
    [[nodiscard]] std::optional<std::string> path(std::size_t items, std::size_t count,
                                                  std::size_t index) const;
    [[nodiscard]] std::optional<QByteArray> contents(std::size_t item) const;

    QByteArray bytes;
};

/// The bundles in a file: the file itself, or what is linked into a program or library of this machine's
/// kind. Reads the disk.
[[nodiscard]] std::vector<ResourceBundle> bundlesOf(const std::string& path);

} // namespace orvantile::platform::menus
