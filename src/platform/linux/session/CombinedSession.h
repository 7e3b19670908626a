#pragma once

#include "platform/linux/session/DesktopSession.h"

namespace orvantile::platform::session {

/// A desktop of two window systems, one running on the other: the inner one is exact about its own windows
/// and knows when none of them is in front.
class CombinedSession final : public DesktopSession {
public:
    /// Both must outlive it, and are its own until then.
    CombinedSession(DesktopSession& inner, DesktopSession& outer);
    CombinedSession(const CombinedSession&) = delete;
    CombinedSession& operator=(const CombinedSession&) = delete;
    ~CombinedSession() override;

    void start() override;
    [[nodiscard]] std::optional<ActiveWindow> activeWindow() const override;
    [[nodiscard]] int openMenus(std::int32_t processIdentifier) const override;
    [[nodiscard]] bool hearsKeys() const override;
    [[nodiscard]] QString keySources() const override;
    void drain() override;

private:
    [[nodiscard]] DesktopSession& front() const;
    void windowChanged();
    void pass(DesktopSession& from);

    DesktopSession& inner;
    DesktopSession& outer;
    std::optional<ActiveWindow> announced;
};

} // namespace orvantile::platform::session
