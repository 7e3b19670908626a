#pragma once

#include "support/desktop/ChildProcess.h"

#include <QTemporaryDir>
#include <atomic>
#include <mutex>
#include <thread>

namespace orvantile::test {

/// A message bus of its own.
class PrivateBus {
public:
    PrivateBus();

    [[nodiscard]] const QString& address() const { return busAddress; }

    [[nodiscard]] QString path(const QString& relative) const { return directory.filePath(relative); }

private:
    QTemporaryDir directory;
    std::unique_ptr<ChildProcess> daemon;
    QString busAddress;
};

/// Settings on the bus, in a thread of their own, that write down which panel they are asked for.
class FakeSettingsService {
public:
    enum class Manner { answers, refuses, keepsSilent };

    /// Returns when the service has its name.
    FakeSettingsService(const QString& address, const QString& name, Manner manner);
    FakeSettingsService(const FakeSettingsService&) = delete;
    FakeSettingsService& operator=(const FakeSettingsService&) = delete;
    ~FakeSettingsService();

    /// What it was asked for: object, action, panel, number of arguments, then the platform data as
    /// "key=value", each. Waits for the first.
    [[nodiscard]] QStringList awaitAsked() const;

private:
    class Inside;

    std::unique_ptr<Inside> inside;
    std::thread thread;
};

} // namespace orvantile::test
