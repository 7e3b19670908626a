#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

/// The system as the tests set it up and look at it. Plain C++.
namespace orvantile::test::desktop {

/// Collects what is autoreleased in a scope, as each turn of the main loop does.
class Pool {
public:
    Pool();
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;
    ~Pool();

private:
    void* pool;
};

/// How many objects exist, and of which classes.
[[nodiscard]] std::size_t liveObjects();
[[nodiscard]] std::string liveObjectNames();

/// Back to a fresh desktop: no timers, no observers, an empty log.
void reset();

// Applications
struct Activation {
    std::optional<int> processIdentifier; ///< absent: the notification names nobody
    bool ofAnotherKind = false;           ///< names something that is no application
};

void setFrontmost(std::optional<int> processIdentifier);
void postActivation(const Activation& activation);
[[nodiscard]] std::size_t activationObservers();
void finishLaunching();

/// What the delegate answers.
bool launchAgain(bool hasVisibleWindows);
[[nodiscard]] bool hasDelegate();
void removeApplicationObject();

// Appearance; absent: of a kind that is neither dark nor light
void setDark(std::optional<bool> dark);
[[nodiscard]] std::size_t appearanceObservers();

// Screens
struct Screen {
    double x, y, width, height;
    double visibleX, visibleY, visibleWidth, visibleHeight;
    double scale = 1;
    long framesPerSecond = 60;
};

void setScreens(const std::vector<Screen>& screens, bool hasMain = true);

// What the system knows
void setSoundNames(const std::set<std::string>& names);
void setSymbolNames(const std::set<std::string>& names);

enum class Sparkle { missing, withoutController, installed };
void setSparkle(Sparkle sparkle);
void setAcceptsAddresses(bool accepts);

// Defaults
using DefaultsObject = std::variant<bool, double, std::string>;
[[nodiscard]] const std::map<std::string, DefaultsObject>& registeredDefaults();
[[nodiscard]] std::map<std::string, DefaultsObject>& storedDefaults();

// The main loop. `advance` fires the timers that are due.
void advance(double seconds);
[[nodiscard]] std::size_t pendingTimers();

// Animations of windows
void finishAnimations();

// The panel
struct View {
    std::string kind;
    double x, y, width, height, alpha;
    bool hasLayerContents = false;
    double pictureWidth = 0, pictureHeight = 0; ///< points
};

struct Panel {
    bool visible = false;
    bool closed = false;
    double x = 0, y = 0, width = 0, height = 0;
    double alpha = 1;
    bool constraintsFromMask = true;
    double intrinsicWidth = 0, intrinsicHeight = 0;
    bool accessible = false;
    std::string role, label;
    std::vector<View> views; ///< from the lowest to the highest
};

/// The latest panel; displays what is to be displayed first.
[[nodiscard]] std::optional<Panel> panel();

/// The colour of a pixel of the picture that a view of that kind shows or is masked by, in rows from the top:
/// 0xRRGGBBAA.
[[nodiscard]] unsigned pixelOf(const std::string& kind, long x, long y);

/// A window of the toolkit with a view in it; its name is NSWindow in the log.
[[nodiscard]] void* makeToolkitView();

// The status bar
struct StatusItem {
    std::string symbol, description;
    bool isTemplate = false;
    bool hasMenu = false;
};

[[nodiscard]] std::vector<StatusItem> statusItems();
void setStatusItemsHaveButtons(bool have);

struct MenuItem {
    std::string title, action, keyEquivalent;
    bool separator = false, hasTarget = false, on = false;
    long tag = 0;

    friend bool operator==(const MenuItem&, const MenuItem&) = default;
};

/// The menu of the first item of the bar.
[[nodiscard]] std::vector<MenuItem> menu();
void openMenu();
void openAnotherMenu();

/// Sends the item's action to its target.
void chooseItem(const std::string& title);

} // namespace orvantile::test::desktop
