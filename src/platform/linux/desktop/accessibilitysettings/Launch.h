#pragma once

#include <QProcessEnvironment>
#include <QString>

namespace orvantile::platform::desktop {

/// The circumstances under which a page is opened.
struct Launch {
    QProcessEnvironment environment;

    /// Lets the opened window come to the front: an activation token or start-up identifier; may be empty.
    QString token;

    /// The environment of a started program: with this token, and free of what is this program's own.
    [[nodiscard]] QProcessEnvironment childEnvironment() const;
};

} // namespace orvantile::platform::desktop
