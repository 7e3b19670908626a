#pragma once

#include <QObject>
#include <QString>
#include <memory>

namespace orvantile::platform::desktop {

/// The panel as assistive technology sees it: a notification of this application whose name is the label.
/// Costs nothing while no such technology is active.
class PanelAccessible {
public:
    PanelAccessible();
    PanelAccessible(const PanelAccessible&) = delete;
    PanelAccessible& operator=(const PanelAccessible&) = delete;
    ~PanelAccessible();

    void setName(const QString& name);

    /// Announces the notification, or that it has gone.
    void setShowing(bool showing);

private:
    class Notification;
    Notification* notification; ///< owned by the toolkit's registry of accessible objects
    unsigned identifier;
};

} // namespace orvantile::platform::desktop
