#pragma once

#include <QImage>
#include <QRegion>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

namespace orvantile::test {

class FakeServer;

/// A compositor of one output of 1280 × 800 pixels that shows nothing, takes layer surfaces, and remembers
/// what it was asked for. It runs on a thread of its own; all members belong to the test's.
class FakeCompositor {
public:
    /// What applies to a layer surface since its latest commit.
    struct Panel {
        QImage picture;     ///< null before the first
        QRegion effectBlur; ///< by the newer protocol
        QRegion kdeBlur;    ///< by KWin's
    };

    /// Throws std::runtime_error when it cannot listen.
    FakeCompositor();
    FakeCompositor(const FakeCompositor&) = delete;
    FakeCompositor& operator=(const FakeCompositor&) = delete;
    ~FakeCompositor();

    /// What WAYLAND_DISPLAY shall be for its clients.
    [[nodiscard]] QString display() const;

    void offerKdeBlur();
    void withdrawKdeBlur();

    /// Offers the newer protocol, with its capabilities.
    void offerEffects(std::uint32_t capabilities);
    void setCapabilities(std::uint32_t capabilities);
    void withdrawEffects();

    /// The layer surface that came last; nothing while there is none.
    [[nodiscard]] std::optional<Panel> panel() const;

private:
    std::unique_ptr<FakeServer> server;
};

} // namespace orvantile::test
