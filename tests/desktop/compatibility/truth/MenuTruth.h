#pragma once

#include <QByteArray>
#include <QObject>

class QSocketNotifier;

namespace orvantile::test {

/// Tells a test what the menus of the program it lives in show, and which actions have really been triggered.
/// Answers on a socket named by the process in the folder that ORVANTILE_TRUTH_FOLDER names.
class MenuTruth final : public QObject {
public:
    explicit MenuTruth(QObject* parent);

private:
    void accept();
    void answer();

    int listener = -1;
    int client = -1;
    QByteArray pending;
};

} // namespace orvantile::test
