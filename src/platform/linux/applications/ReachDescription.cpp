#include "platform/linux/applications/ReachDescription.h"

namespace orvantile::platform::applications {
namespace {

using Qt::StringLiterals::operator""_s;

QString describe(const ProgramFacts& program, const a11y::MenuReach& reach, Helper helper) {
    if (program.hasHelper) {
        return u"tells each command when it is fired."_s;
    }
    if (reach.accelerators == 1) {
        return u"tells one command that has a shortcut."_s;
    }
    if (reach.accelerators > 0) {
        return u"tells %1 commands that have shortcuts."_s.arg(reach.accelerators);
    }
    if (program.usesQt && helper == Helper::on) {
        return u"was started without the helper. Start it again."_s;
    }
    if (program.usesQt && helper == Helper::off) {
        return u"tells its commands only with the helper, which is off."_s;
    }
    if (!reach.asked) {
        return u"has not been in front since Orvantile could ask it for its menus."_s;
    }
    if (reach.items > 0) {
        return u"tells the commands of a menu once that has been opened."_s;
    }
    return u"does not tell its menus. If it has been running since before access was granted, start it again."_s;
}

} // namespace

QString describeReach(const ProgramFacts& program, const a11y::MenuReach& reach, Helper helper) {
    return u"“%1”, used last, "_s.arg(program.name) + describe(program, reach, helper);
}

} // namespace orvantile::platform::applications
