#include "platform/linux/desktop/updates/UpdateEngine.h"

#include <utility>

namespace orvantile::platform::desktop {
namespace {

constexpr qint64 progressInterval = 100; // ms

} // namespace

UpdateEngine::UpdateEngine(UpdateSetup setup_) : setup(std::move(setup_)) {}

void UpdateEngine::check(std::function<void(CheckResult)> done) {
    transfer.reset();
    package.reset();
    feed.clear();
    transfer = std::make_unique<Transfer>(
        network, setup.policy, setup.policy.feed, setup.configuration.feed,
        [this](const QByteArray& piece) {
            feed += piece;
            return std::optional<UpdateFailure>();
        },
        [this, done = std::move(done)](std::optional<UpdateFailure> failure) {
            const auto body = std::exchange(feed, {});
            done(failure ? CheckResult(*failure) : chooseUpdate(body, setup.copy, setup.policy));
        });
}

void UpdateEngine::download(AvailableUpdate update, std::function<void(qint64)> progress,
                            std::function<void(DownloadResult)> done) {
    transfer.reset();
    stored = 0;
    sinceProgress.start();
    package = std::make_unique<PackageFile>(setup.downloadFolder);
    if (const auto failure = package->open(update.length)) {
        package.reset();
        done(*failure);
        return;
    }
    auto limits = setup.policy.package;
    limits.bytes = std::min(limits.bytes, update.length);
    const auto url = update.package;
    transfer = std::make_unique<Transfer>(
        network, setup.policy, limits, url,
        [this, progress = std::move(progress)](const QByteArray& piece) { return store(piece, progress); },
        [this, update = std::move(update), done = std::move(done)](std::optional<UpdateFailure> failure) {
            const auto file = std::exchange(package, nullptr);
            if (failure) {
                // The limit is the announced length, so more than it is a wrong length.
                done(*failure == UpdateFailure::tooLarge ? UpdateFailure::wrongLength : *failure);
                return;
            }
            done(file->keep(update.length, update.signature, setup.configuration.key, update.package));
        });
}

std::optional<UpdateFailure> UpdateEngine::store(const QByteArray& piece,
                                                 const std::function<void(qint64)>& progress) {
    if (const auto failure = package->append(piece)) {
        return failure;
    }
    stored += piece.size();
    if (sinceProgress.hasExpired(progressInterval)) {
        sinceProgress.start();
        progress(stored);
    }
    return std::nullopt;
}

} // namespace orvantile::platform::desktop
