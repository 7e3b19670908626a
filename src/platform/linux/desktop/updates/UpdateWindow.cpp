#include "platform/linux/desktop/updates/UpdateWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextEdit>
#include <QTextList>

namespace orvantile::platform::desktop {

using Qt::StringLiterals::operator""_s;

namespace {

constexpr int windowWidth = 440;
constexpr int notesWidth = 520;
constexpr int notesHeight = 200;
constexpr int iconSize = 64;
constexpr int margin = 20;
constexpr int smallGap = 6;
constexpr int buttonGap = 8;
constexpr int buttonPadding = 24;
constexpr int notesMargin = 8;
constexpr int notesIndent = 18;

/// Widgets belong to their window from the start.
template <typename Widget>
Widget* make(QWidget* parent) {
    return std::make_unique<Widget>(parent).release();
}

/// The theme knows the icon of a usual installation; one elsewhere has it beside the program.
QIcon programIcon() {
    static const auto name = u"org.orvantile.Orvantile"_s;
    const QDir programs(QCoreApplication::applicationDirPath());
    return QIcon::fromTheme(
        name, QIcon(programs.filePath(u"../share/icons/hicolor/128x128/apps/"_s % name % u".png")));
}

void fill(QTextEdit& view, const ReleaseNotes& notes) {
    view.clear();
    QTextCursor cursor(view.document());
    QTextListFormat bullets;
    bullets.setStyle(QTextListFormat::ListDisc);
    bullets.setIndent(1);
    for (const auto& paragraph : notes) {
        const auto isHeading = paragraph.kind == NotesParagraph::Kind::heading;
        QTextBlockFormat block;
        block.setTopMargin(isHeading ? 8 : 2);
        block.setBottomMargin(isHeading ? 4 : 2);
        QTextCharFormat letters;
        letters.setFontWeight(isHeading ? QFont::DemiBold : QFont::Normal);
        if (cursor.atStart()) {
            cursor.setBlockFormat(block);
            cursor.setBlockCharFormat(letters);
        } else {
            cursor.insertBlock(block, letters);
        }
        if (paragraph.kind == NotesParagraph::Kind::bullet) {
            cursor.createList(bullets);
        }
        cursor.insertText(paragraph.text, letters);
    }
    view.moveCursor(QTextCursor::Start);
}

} // namespace

UpdateWindow::UpdateWindow(std::function<void()> closed_)
    : closed(std::move(closed_)),
      title(make<QLabel>(this)),
      text(make<QLabel>(this)),
      progress(make<QProgressBar>(this)),
      notesView(make<QTextEdit>(this)) {
    setWindowTitle(u"Orvantile Update"_s);
    setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                   Qt::WindowMinimizeButtonHint);
    setObjectName(u"updateWindow"_s);

    auto* const icon = make<QLabel>(this);
    icon->setPixmap(programIcon().pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
    icon->setFixedSize(iconSize, iconSize);
    setWindowIcon(programIcon());

    auto large = font();
    large.setPointSizeF(large.pointSizeF() * 1.25);
    large.setWeight(QFont::DemiBold);
    title->setFont(large);
    title->setObjectName(u"title"_s);
    text->setObjectName(u"text"_s);
    for (auto* const label : {title, text}) {
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    progress->setTextVisible(false);
    progress->setAccessibleName(u"Progress"_s);
    notesView->setReadOnly(true);
    notesView->setFixedHeight(notesHeight);
    notesView->setTabChangesFocus(true);
    notesView->document()->setDocumentMargin(notesMargin);
    notesView->document()->setIndentWidth(notesIndent);
    notesView->setAccessibleName(u"Release notes"_s);

    auto columnLayout = std::make_unique<QVBoxLayout>();
    columnLayout->setSpacing(smallGap);
    columnLayout->addWidget(title);
    columnLayout->addWidget(text);
    columnLayout->addSpacing(smallGap);
    columnLayout->addWidget(progress);
    columnLayout->addWidget(notesView);
    columnLayout->addStretch();
    auto rowLayout = std::make_unique<QHBoxLayout>();
    rowLayout->setSpacing(buttonGap);
    rowLayout->addStretch();
    buttonRow = rowLayout.get();

    auto* const grid = std::make_unique<QGridLayout>(this).release();
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setHorizontalSpacing(margin);
    grid->setVerticalSpacing(margin);
    grid->addWidget(icon, 0, 0, Qt::AlignTop);
    grid->addLayout(columnLayout.release(), 0, 1);
    grid->addLayout(rowLayout.release(), 1, 0, 1, 2);
    grid->setColumnStretch(1, 1);
}

void UpdateWindow::showMessage(const UpdateMessage& message) {
    showMessage(message, {});
}

void UpdateWindow::showMessage(const UpdateMessage& message, const ReleaseNotes& notes) {
    setMessage(message);
    progress->hide();
    notesView->setVisible(!notes.empty());
    fill(*notesView, notes);
    settleSize();
}

void UpdateWindow::showProgress(const UpdateMessage& message, std::optional<int> percent) {
    setMessage(message);
    notesView->hide();
    progress->setRange(0, percent ? 100 : 0);
    progress->setValue(percent.value_or(0));
    progress->show();
    settleSize();
}

void UpdateWindow::updateProgress(const QString& sentence, int percent) {
    text->setText(sentence);
    progress->setRange(0, 100);
    progress->setValue(percent);
}

void UpdateWindow::present() {
    if (isMinimized()) {
        showNormal();
    }
    show();
    raise();
    activateWindow();
}

void UpdateWindow::setMessage(const UpdateMessage& message) {
    title->setText(message.title);
    text->setText(message.text);
    text->setVisible(!message.text.isEmpty());
    setButtons(message.buttons);
}

void UpdateWindow::setButtons(const std::vector<UpdateButton>& wanted) {
    for (auto* const button : std::exchange(buttons, {})) {
        // One of them may be what was clicked to come here.
        button->hide();
        buttonRow->removeWidget(button);
        button->deleteLater();
    }
    for (const auto& [name, action] : wanted) {
        auto* const button = make<QPushButton>(this);
        button->setText(name);
        button->setAutoDefault(true);
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance(name) + buttonPadding);
        connect(button, &QPushButton::clicked, button, action);
        buttonRow->addWidget(button);
        button->show();
        buttons.push_back(button);
    }
    if (!buttons.empty()) {
        buttons.back()->setDefault(true);
        buttons.back()->setFocus();
    }
}

void UpdateWindow::settleSize() {
    const auto width = notesView->isHidden() ? windowWidth : notesWidth;
    layout()->activate();
    setFixedSize(width,
                 std::max(layout()->totalHeightForWidth(width), layout()->totalMinimumSize().height()));
}

void UpdateWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    if (closed) {
        closed();
    }
}

void UpdateWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    const auto isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !buttons.empty()) {
        buttons.back()->click();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace orvantile::platform::desktop
