#pragma once

#include "platform/Panel.h"
#include "platform/Scheduler.h"

#include <functional>
#include <list>
#include <memory>

namespace orvantile::platform::desktop {

/// Decides when a panel is drawn and how faded: runs the alpha animations and the entrance of the content,
/// one picture per screen refresh while something moves and none otherwise. Knows nothing of windows. Main
/// thread only.
class PanelFrames {
public:
    /// Puts a picture on the screen; its opacity includes the panel's alpha.
    using Present = std::function<void(const PanelFrame&)>;

    /// A picture drawn now is seen at the next refresh, so it shows that instant (seconds).
    static constexpr double lead = 1.0 / 60;

    /// The first picture of a content stands until the second comes. It shows the end of that time rather
    /// than its beginning, at which there is all but nothing to see of an entrance; no later one shows an
    /// earlier instant (seconds).
    static constexpr double opening = 2 * lead;

    PanelFrames(Scheduler& scheduler, Present present);
    PanelFrames(const PanelFrames&) = delete;
    PanelFrames& operator=(const PanelFrames&) = delete;
    ~PanelFrames() = default;

    /// Its entrance begins with the first picture of it.
    void setContent(std::shared_ptr<const PanelContent> content);

    /// Ends an animation; its completion is still called at its time.
    void setAlpha(double alpha);

    /// Linear in time. The first picture is presented before this returns.
    void animateAlpha(double alpha, double duration, std::function<void()> completion);

    /// Nothing is presented while it is not visible. The first picture follows in a later turn of the main
    /// loop or with the next animation, whichever comes first.
    void setVisible(bool visible);

    /// Presents once more, in a later turn of the main loop: the panel has changed otherwise.
    void invalidate();

    [[nodiscard]] double alpha() const { return alphaAt(scheduler.now()); }

private:
    struct Ramp {
        double from = 1;
        double to = 1;
        double start = 0;
        double duration = 0; ///< 0 while the alpha rests
    };

    struct Completion {
        std::unique_ptr<Scheduled> timer;
        bool called = false;
    };

    void present();
    void tick(bool moving);
    [[nodiscard]] double alphaAt(double time) const;
    [[nodiscard]] bool isFading(double time) const;

    Scheduler& scheduler;
    Present show;
    std::shared_ptr<const PanelContent> content;
    bool entered = false; ///< whether the entrance has begun
    double entranceStart = 0;
    Ramp ramp;
    bool visible = false;
    std::unique_ptr<Scheduled> ticker;
    std::unique_ptr<Scheduled> soon;
    std::list<Completion> completions;
};

} // namespace orvantile::platform::desktop
