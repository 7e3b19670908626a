#pragma once

#include "desktop/preferences/Accessible.h"
#include "support/desktop/Deadline.h"

#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <systemd/sd-bus.h>
#include <vector>

namespace orvantile::test {

/// Reads and operates programs as a screen reader does. What a program does not answer is empty.
class AccessibleClient {
public:
    /// Throws std::runtime_error when there is no such bus.
    explicit AccessibleClient(const QString& busAddress);
    AccessibleClient(const AccessibleClient&) = delete;
    AccessibleClient& operator=(const AccessibleClient&) = delete;
    ~AccessibleClient();

    /// The root of all programs.
    [[nodiscard]] static Accessible desktop();

    [[nodiscard]] std::vector<Accessible> children(const Accessible& object) const;
    [[nodiscard]] QString name(const Accessible& object) const;
    [[nodiscard]] QString description(const Accessible& object) const;
    [[nodiscard]] QString role(const Accessible& object) const;
    [[nodiscard]] bool has(const Accessible& object, AccessibleState state) const;

    /// The texts of what says that it is the label of `object`.
    [[nodiscard]] QStringList labels(const Accessible& object) const;

    [[nodiscard]] QRect extents(const Accessible& object) const; ///< pixels of the screen
    [[nodiscard]] QStringList actions(const Accessible& object) const;
    [[nodiscard]] std::optional<AccessibleValue> value(const Accessible& object) const;

    /// Whether the program says that it has done it.
    [[nodiscard]] bool perform(const Accessible& object, const QString& action) const;
    [[nodiscard]] bool focus(const Accessible& object) const;
    [[nodiscard]] bool select(const Accessible& object, int child) const;

    void setValue(const Accessible& object, double value) const;

    /// Everything below `object` that is on the screen, in depth-first order.
    [[nodiscard]] std::vector<Accessible> shownBelow(const Accessible& object) const;

    [[nodiscard]] std::optional<Accessible> find(const Accessible& below, const QString& role,
                                                 const QString& name) const;

    /// Asks again whenever a program announces something, and at times besides. False at the deadline.
    [[nodiscard]] bool await(const std::function<bool()>& condition,
                             const QDeadlineTimer& deadline = QDeadlineTimer(patience)) const;

private:
    struct CloseBus {
        void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
    };

    struct ReleaseMessage {
        void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
    };

    using Reply = std::unique_ptr<sd_bus_message, ReleaseMessage>;

    template <typename... Arguments>
    [[nodiscard]] Reply call(const Accessible& object, const char* interface, const char* method,
                             const char* types = "", Arguments... arguments) const;
    [[nodiscard]] QString textProperty(const Accessible& object, const char* property) const;
    [[nodiscard]] static bool agreed(const Reply& reply);

    std::unique_ptr<sd_bus, CloseBus> bus;
};

} // namespace orvantile::test
