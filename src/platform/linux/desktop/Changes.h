#pragma once

#include <QByteArray>
#include <utility>
#include <vector>

namespace orvantile::platform::desktop {

/// Keys and the texts after `key=`, the latest for each key, in the order of assignment.
class Changes {
public:
    void set(const QByteArray& key, const QByteArray& text) {
        std::erase_if(list, [&](const auto& change) { return change.first == key; });
        list.emplace_back(key, text);
    }

    [[nodiscard]] auto begin() const { return list.begin(); }

    [[nodiscard]] auto end() const { return list.end(); }

    void clear() { list.clear(); }

private:
    std::vector<std::pair<QByteArray, QByteArray>> list;
};

} // namespace orvantile::platform::desktop
