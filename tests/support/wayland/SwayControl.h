#pragma once

#include "support/desktop/FileDescriptor.h"

#include <QJsonDocument>
#include <QString>

namespace orvantile::test {

/// The control socket of a compositor. Each member waits for the answer and throws std::runtime_error when
/// there is none or the command fails.
class SwayControl {
public:
    explicit SwayControl(const QString& socketPath);

    void run(const QString& command) const;

    [[nodiscard]] QJsonDocument outputs() const;
    [[nodiscard]] QJsonDocument tree() const;

    /// The title of the window that has the focus; empty when none has.
    [[nodiscard]] QString focusedTitle() const;

private:
    [[nodiscard]] QByteArray ask(quint32 type, const QByteArray& payload) const;

    FileDescriptor socket;
};

} // namespace orvantile::test
