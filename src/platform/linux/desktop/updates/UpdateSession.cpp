#include "platform/linux/desktop/updates/UpdateSession.h"

#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <array>

namespace orvantile::platform::desktop {

using Qt::StringLiterals::operator""_s;

namespace {

/// Kinds of package that the desktop opens with its installer. Anything else is only shown in its folder,
/// so that opening it can never mean running it.
bool hasInstaller(const QString& path) {
    static constexpr auto endings = std::to_array<QStringView>(
        {u".deb", u".rpm", u".flatpak", u".flatpakref", u".snap", u".pkg.tar.zst"});
    return std::ranges::any_of(
        endings, [&](QStringView ending) { return path.endsWith(ending, Qt::CaseInsensitive); });
}

QString size(qint64 bytes) {
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

QString downloadSentence(qint64 received, qint64 length) {
    return u"%1 of %2"_s.arg(size(received), size(length));
}

} // namespace

UpdateSession::UpdateSession(UpdaterEnvironment environment_) : environment(std::move(environment_)) {}

void UpdateSession::check() {
    if (!window) {
        window = std::make_unique<UpdateWindow>([this] { close(); });
    }
    if (!worker && !isOffering) {
        begin();
    }
    window->present();
}

void UpdateSession::begin() {
    auto configuration = UpdateConfiguration::read(environment.configurationFile, environment.policy);
    if (std::holds_alternative<UpdateConfiguration::Absent>(configuration)) {
        showNotConfigured();
        return;
    }
    auto* const found = std::get_if<UpdateConfiguration>(&configuration);
    auto version = Version::parse(environment.version);
    if (found == nullptr || !version) {
        showFailure(u"Updates cannot be checked"_s, UpdateFailure::misconfigured, {});
        return;
    }
    window->showProgress({u"Checking for updates…"_s, {}, {closeButton(u"Cancel"_s)}}, std::nullopt);
    worker = std::make_unique<UpdateWorker>(
        UpdateSetup{std::move(*found),
                    environment.policy,
                    {*std::move(version), Version::parse(environment.systemRelease)},
                    environment.downloadFolder});
    worker->check([this](CheckResult result) { checked(std::move(result)); });
}

void UpdateSession::close() {
    worker.reset();
    isOffering = false;
    if (window) {
        // The click or the closing that led here is still inside it.
        window->hide();
        window.release()->deleteLater();
    }
}

void UpdateSession::checked(CheckResult result) {
    if (const auto* const update = std::get_if<AvailableUpdate>(&result)) {
        offer(*update);
        return;
    }
    worker.reset();
    if (const auto* const failure = std::get_if<UpdateFailure>(&result)) {
        showFailure(u"The check for updates failed"_s, *failure, [this] { begin(); });
    } else if (const auto* const system = std::get_if<SystemTooOld>(&result)) {
        showSystemTooOld(*system);
    } else {
        showUpToDate();
    }
}

void UpdateSession::offer(const AvailableUpdate& update) {
    isOffering = true;
    UpdateMessage message{u"A new version of Orvantile is available"_s,
                          u"Orvantile %1 can be downloaded (%2). You have version %3."_s.arg(
                              update.version, size(update.length), environment.version),
                          {closeButton(u"Not Now"_s)}};
    if (!update.notesPage.isEmpty()) {
        message.buttons.push_back(
            {u"Read More…"_s, [this, page = update.notesPage] { environment.open(page); }});
    }
    message.buttons.push_back({u"Download and Install"_s, [this, update] { download(update); }});
    window->showMessage(message, update.notes);
    window->present();
}

void UpdateSession::download(const AvailableUpdate& update) {
    window->showProgress({u"Downloading Orvantile %1…"_s.arg(update.version),
                          downloadSentence(0, update.length),
                          {closeButton(u"Cancel"_s)}},
                         0);
    worker->download(
        update,
        [this, length = update.length](qint64 received) {
            window->updateProgress(downloadSentence(received, length), int(received * 100 / length));
        },
        [this, update](const DownloadResult& result) { downloaded(update, result); });
}

void UpdateSession::downloaded(const AvailableUpdate& update, const DownloadResult& result) {
    if (const auto* const failure = std::get_if<UpdateFailure>(&result)) {
        showFailure(u"The update could not be downloaded"_s, *failure, [this, update] { download(update); });
        return;
    }
    worker.reset();
    isOffering = false;
    handOver(update, std::get<QString>(result));
}

void UpdateSession::handOver(const AvailableUpdate& update, const QString& path) {
    const QFileInfo file(path);
    const auto folder = QUrl::fromLocalFile(file.absolutePath());
    const auto isOpened = hasInstaller(path) && environment.open(QUrl::fromLocalFile(path));
    const auto saved = u"It was saved as “%1” in your Downloads folder."_s.arg(file.fileName());
    const auto next =
        isOpened ? u"Your system’s installer opens now. "_s : u"Open it there to install it. "_s;
    window->showMessage(
        {u"Orvantile %1 has been downloaded"_s.arg(update.version),
         isOpened ? next + saved : QString(saved % u' ' % next.trimmed()),
         {{u"Show in Folder"_s, [this, folder] { environment.open(folder); }}, closeButton(u"Done"_s)}});
    window->present();
}

void UpdateSession::showUpToDate() {
    window->showMessage({u"Orvantile is up to date"_s,
                         u"Version %1 is the newest one."_s.arg(environment.version),
                         {closeButton(u"OK"_s)}});
}

void UpdateSession::showNotConfigured() {
    window->showMessage({u"Updates come with your system"_s,
                         u"This copy of Orvantile (%1) is kept up to date together with your system’s other "
                         u"packages. There is nothing to check here."_s.arg(environment.version),
                         {closeButton(u"OK"_s)}});
}

void UpdateSession::showSystemTooOld(const SystemTooOld& result) {
    window->showMessage(
        {u"A newer version needs a newer system"_s,
         u"Orvantile %1 needs release %2 of your system or later; you have %3. You keep version %4."_s.arg(
             result.version, result.minimumSystem, environment.systemRelease, environment.version),
         {closeButton(u"OK"_s)}});
}

void UpdateSession::showFailure(const QString& title, UpdateFailure failure, std::function<void()> again) {
    UpdateMessage message{title, describe(failure), {closeButton(u"Close"_s)}};
    if (again) {
        message.buttons.push_back({u"Try Again"_s, std::move(again)});
    }
    window->showMessage(message);
}

UpdateButton UpdateSession::closeButton(const QString& title) {
    return {title, [this] { close(); }};
}

} // namespace orvantile::platform::desktop
