#pragma once

#include <string>
#include <vector>

namespace orvantile::test {

/// The messages that the code under test has sent to the system's classes, in order and as it would write
/// them, such as `[NSPanel setLevel:25]`. Messages to plain values (strings, collections, numbers) are left
/// out.
class CallRecorder {
public:
    [[nodiscard]] static CallRecorder& shared();

    void add(std::string call) { recorded.push_back(std::move(call)); }

    void clear() { recorded.clear(); }

    /// Forgets all but the first `count`.
    void shorten(std::size_t count) { recorded.resize(count); }

    [[nodiscard]] const std::vector<std::string>& calls() const { return recorded; }

    /// The calls to `receiver` only.
    [[nodiscard]] std::vector<std::string> callsTo(const std::string& receiver) const;

private:
    std::vector<std::string> recorded;
};

} // namespace orvantile::test
