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
        QImage picture;      ///< null before the first
        int bufferScale = 1; ///< pixels of the picture to a point
        int number = 0;      ///< later ones have higher ones
        QRegion effectBlur;  ///< by the newer protocol
        QRegion kdeBlur;     ///< by KWin's
    };

    /// Throws std::runtime_error when it cannot listen.
    FakeCompositor();
    FakeCompositor(const FakeCompositor&) = delete;
    FakeCompositor& operator=(const FakeCompositor&) = delete;
    ~FakeCompositor();

    /// What WAYLAND_DISPLAY shall be for its clients.
    [[nodiscard]] QString display() const;

    /// Of the output.
    void setScale(int scale);

    /// Closes all panels, as when their output is taken away.
    void closePanels();

    /// Closes panels at once from now on, instead of agreeing to them.
    void refusePanels();

    void offerKdeBlur();
    void withdrawKdeBlur();

    /// Offers the newer protocol, with its capabilities.
    void offerEffects(std::uint32_t capabilities);
    void setCapabilities(std::uint32_t capabilities);
    void withdrawEffects();

    /// The layer surface that came last; nothing while there is none.
    [[nodiscard]] std::optional<Panel> panel() const;

    /// How many surfaces it was asked for so far.
    [[nodiscard]] int surfaces() const;

private:
    std::unique_ptr<FakeServer> server;
};

} // namespace orvantile::test
