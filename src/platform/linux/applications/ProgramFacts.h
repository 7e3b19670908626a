#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orvantile::platform::applications {

/// What can be told of a running program from outside.
struct ProgramFacts {
    QString name;
    bool usesQt = false;
    bool hasHelper = false; ///< the helper for Qt programs is loaded in it

    friend bool operator==(const ProgramFacts&, const ProgramFacts&) = default;
};

/// Concludes them from the map of the process's memory.
[[nodiscard]] ProgramFacts factsFrom(const QString& name, std::string_view map);

/// Absent for a process that has ended or may not be looked at. Takes a few milliseconds.
[[nodiscard]] std::optional<ProgramFacts> factsOf(std::int32_t processIdentifier);

} // namespace orvantile::platform::applications
