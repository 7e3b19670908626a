#pragma once

#include "helper/qt/HelperMessage.h"

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtGui/QShortcutEvent>
#include <array>
#include <sys/types.h>
#include <sys/un.h>

namespace orvantile::helper {

/// Tells which menu commands the program's shortcuts fire and when its menus open and close. It changes
/// nothing in the program it lives in and never waits; without a receiver nothing happens.
class ActionReporter final : public QObject {
public:
    explicit ActionReporter(QObject* parent);
    ActionReporter(const ActionReporter&) = delete;
    ActionReporter& operator=(const ActionReporter&) = delete;
    ~ActionReporter() override;

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void reportShortcut(const QObject& object, const QShortcutEvent& event) const;
    void menuShown(const QObject* object);
    void hidden(const QObject* object);
    [[nodiscard]] bool ownsDescriptor() const;
    void send(std::uint8_t kind, MessageHeader header = {}, const QByteArray& text = {}) const;

    /// Open menus, the latest last. Only compared, never followed: a menu that hides while it is being
    /// destroyed no longer says that it is a menu.
    std::array<const QObject*, 16> openMenus{};
    std::size_t openCount = 0;
    sockaddr_un receiver{};
    int descriptor = -1;
    ino_t identity = 0; ///< of our socket
};

} // namespace orvantile::helper
