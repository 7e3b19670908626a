#include "platform/linux/desktop/PermissionPrompt.h"

#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

} // namespace

PermissionPrompt::PermissionPrompt(Scheduler& scheduler_, Actions actions_)
    : scheduler(scheduler_),
      actions(std::move(actions_)),
      created(scheduler.now()) {}

PermissionPrompt::~PermissionPrompt() = default;

void PermissionPrompt::ask() {
    const double remaining = std::max(created + busPatience - scheduler.now(), 0.0);
    pending = scheduler.runAfter(remaining, [this] { show(); });
}

void PermissionPrompt::reconsider() {
    if (dialog && dialog->isVisible() && actions.obstacle() == Obstacle::none) {
        dialog->close();
    }
}

void PermissionPrompt::show() {
    const auto obstacle = actions.obstacle();
    if (obstacle == Obstacle::none) {
        return;
    }
    dialog = std::make_unique<QMessageBox>();
    dialog->setWindowTitle(u"Orvantile"_s);
    dialog->setIcon(QMessageBox::Information);
    dialog->setModal(false);
    if (obstacle == Obstacle::noKeys) {
        dialog->setText(u"Shortcuts cannot be heard"_s);
        dialog->setInformativeText(
            u"The display server does not let programs hear key presses, so Orvantile cannot name the "
            "commands that your shortcuts fire."_s);
        dialog->addButton(QMessageBox::Close);
    } else {
        dialog->setText(u"Accessibility is switched off"_s);
        dialog->setInformativeText(u"Orvantile learns the names of menu commands through the desktop's "
                                   u"accessibility service. Turn it "
                                   u"on to see the commands that your shortcuts fire.\n\nThis also has Qt "
                                   u"programs load a small helper "
                                   u"that tells Orvantile their commands, from your next login on. Qt and "
                                   u"Chromium programs that are "
                                   u"running need a restart before their commands can be named."_s);
        const auto* turnOn = dialog->addButton(u"Turn On"_s, QMessageBox::AcceptRole);
        dialog->addButton(u"Not Now"_s, QMessageBox::RejectRole);
        QObject::connect(turnOn, &QPushButton::clicked, dialog.get(), [this] { actions.turnOn(); });
    }
    dialog->show();
}

} // namespace orvantile::platform::desktop
