#include "desktop/endtoend/ShownCapsule.h"

#include "support/desktop/Screenshot.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <set>
#include <stdexcept>

namespace orvantile::test {

ShownCapsule::ShownCapsule(const QString& display, const QRect& frame)
    : picture(takeScreenshot(display, frame)) {
    if (picture.isNull()) {
        throw std::runtime_error("no picture of the HUD");
    }
}

int ShownCapsule::prevailingGrey() const {
    std::array<int, 256> counts{};
    for (int y = picture.height() * 2 / 5; y < picture.height() / 2; ++y) {
        for (int x = picture.width() / 4; x < picture.width() * 3 / 4; ++x) {
            ++counts.at(static_cast<std::size_t>(grey(x, y)));
        }
    }
    return static_cast<int>(std::ranges::max_element(counts) - counts.begin());
}

int ShownCapsule::greysFromTopToBottom() const {
    // Left of the label, inside the capsule's round end.
    const int middle = picture.height() / 2;
    int x = 0;
    while (x < picture.width() / 2 && std::abs(grey(x, middle) - desktopGrey) < 32) {
        ++x;
    }
    constexpr int intoTheCapsule = 18;
    std::set<int> greys;
    for (int y = 0; y < picture.height(); ++y) {
        greys.insert(grey(std::min(x + intoTheCapsule, picture.width() - 1), y));
    }
    return static_cast<int>(greys.size());
}

int ShownCapsule::width() const {
    constexpr int visible = 24;
    const int middle = picture.height() / 2;
    int strongest = 0;
    for (int x = 0; x < picture.width(); ++x) {
        strongest = std::max(strongest, std::abs(grey(x, middle) - desktopGrey));
    }
    if (strongest < visible) {
        return 0;
    }
    int first = picture.width();
    int last = -1;
    for (int x = 0; x < picture.width(); ++x) {
        if (std::abs(grey(x, middle) - desktopGrey) > strongest / 2) {
            first = std::min(first, x);
            last = x;
        }
    }
    return last - first + 1;
}

} // namespace orvantile::test
