#pragma once

#include <functional>
#include <memory>

namespace orvantile {

/// A window that can be brought to the front, whether it is hidden, behind others or minimised.
class PresentableWindow {
public:
    PresentableWindow() = default;
    PresentableWindow(const PresentableWindow&) = delete;
    PresentableWindow& operator=(const PresentableWindow&) = delete;
    virtual ~PresentableWindow() = default;

    /// Shows the window, raises it and gives it the focus.
    virtual void present() = 0;
};

using WindowFactory = std::function<std::unique_ptr<PresentableWindow>()>;

} // namespace orvantile
