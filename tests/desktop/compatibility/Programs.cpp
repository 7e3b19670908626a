#include "desktop/compatibility/Program.h"

#include "desktop/compatibility/ProgramLists.h"

#include <algorithm>
#include <stdexcept>

namespace orvantile::test {

const std::vector<Program>& allPrograms() {
    static const std::vector<Program> programs = [] {
        auto all = gtkPrograms();
        std::ranges::move(qtPrograms(), std::back_inserter(all));
        std::ranges::move(otherPrograms(), std::back_inserter(all));
        return all;
    }();
    return programs;
}

const Program& programNamed(const QString& name) {
    const auto found = std::ranges::find(allPrograms(), name, &Program::name);
    if (found == allPrograms().end()) {
        throw std::runtime_error("there is no program " + name.toStdString() + " in the list");
    }
    return *found;
}

} // namespace orvantile::test
