#include "trace/Turns.h"

#include "trace/Trace.h"

#include <glib.h>
#include <optional>

namespace orvantile::trace {
namespace {

std::optional<Span>& turn() {
    static std::optional<Span> current;
    return current;
}

/// The loop's wait. What Qt tells of its loop does not serve: with this library it speaks between two waits,
/// and events are handled within them.
gint wait(GPollFD* descriptors, guint count, gint milliseconds) {
    turn().reset();
    const gint ready = g_poll(descriptors, count, milliseconds);
    turn().emplace(Step::turn);
    return ready;
}

} // namespace

Turns::Turns() {
    g_main_context_set_poll_func(g_main_context_default(), &wait);
}

Turns::~Turns() {
    g_main_context_set_poll_func(g_main_context_default(), nullptr);
    turn().reset();
}

} // namespace orvantile::trace
