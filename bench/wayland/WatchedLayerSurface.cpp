// The panel's surface as the program has it, but with its commits told to the benchmark.

#include "wayland/CommitWatch.h"

#include "platform/linux/wayland/LayerSurface.h"

#define wl_surface_commit orvantile::bench::CommitWatch::commit
#include "platform/linux/wayland/LayerSurface.cpp" // NOLINT(bugprone-suspicious-include)
