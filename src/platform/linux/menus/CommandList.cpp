#include "platform/linux/menus/CommandList.h"

#include "platform/linux/a11y/MenuItemNode.h"

#include <memory>

namespace orvantile::platform::menus {

a11y::MenuAnswer answer(const Commands& commands, const keys::Candidates& candidates) {
    a11y::MenuAnswer answer;
    for (const auto& candidate : candidates) {
        for (const auto& command : commands) {
            if (command.accelerator != candidate) {
                continue;
            }
            answer.decided = true;
            if (command.enabled && !command.title.isEmpty()) {
                answer.command = std::make_shared<a11y::MenuItemNode>(command.title, command.accelerator);
                return answer;
            }
        }
    }
    return answer;
}

QString withoutMnemonic(QStringView label) {
    QString shown;
    shown.reserve(label.size());
    for (qsizetype index = 0; index < label.size(); ++index) {
        if (label[index] == u'_' && (++index == label.size() || label[index] != u'_')) {
            --index;
            continue;
        }
        shown += label[index];
    }
    return shown.trimmed();
}

} // namespace orvantile::platform::menus
