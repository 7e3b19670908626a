#pragma once

#include <QString>

namespace orvantile::platform {

/// The desktop's named sounds. Main thread only.
class Sounds {
public:
    Sounds() = default;
    Sounds(const Sounds&) = delete;
    Sounds& operator=(const Sounds&) = delete;
    virtual ~Sounds() = default;

    /// Starts the sound called `name` and returns at once; silent when there is no such sound or no way to
    /// play.
    virtual void play(const QString& name) = 0;
};

} // namespace orvantile::platform
