#include "platform/linux/desktop/updates/ReleaseNotes.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <algorithm>
#include <array>

namespace orvantile::platform::desktop {

using Qt::StringLiterals::operator""_s;

namespace {

constexpr qsizetype longestNotes = 16'384;
constexpr std::size_t mostParagraphs = 400;

bool isStructure(QStringView tag) {
    static constexpr auto tags = std::to_array<QStringView>(
        {u"h1", u"h2", u"h3", u"h4", u"h5", u"h6", u"p", u"ul", u"ol", u"li", u"br", u"div"});
    return std::ranges::any_of(
        tags, [&](QStringView known) { return tag.compare(known, Qt::CaseInsensitive) == 0; });
}

/// Leaves the known tags without their attributes, so that the toolkit's parser meets nothing that could
/// load, size or nest what the notes do not need.
QString structureOnly(QString html) {
    static const QRegularExpression invisible(
        u"<!--.*?(-->|$)|<(script|style|head|title)\\b[^>]*>.*?(</\\2\\s*>|$)"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression tagPattern(u"<(/?)([A-Za-z][A-Za-z0-9]*)\\b[^<>]*>"_s);
    html.remove(invisible);

    QString reduced;
    qsizetype position = 0;
    const auto appendText = [&](qsizetype end) {
        reduced += html.sliced(position, end - position).replace(u'<', u"&lt;"_s);
    };
    for (auto found = tagPattern.globalMatch(html); found.hasNext();) {
        const auto tag = found.next();
        appendText(tag.capturedStart());
        reduced += isStructure(tag.capturedView(2))
                       ? QString(u'<' + tag.captured(1) + tag.captured(2).toLower() + u'>')
                       : u" "_s;
        position = tag.capturedEnd();
    }
    appendText(html.size());
    return reduced;
}

QString visibleText(const QString& text) {
    QString visible;
    for (const auto character : text) {
        const auto category = character.category();
        // Line breaks within a block become blanks; format characters could reorder what is read.
        if (character == QChar::ObjectReplacementCharacter || category == QChar::Other_Format) {
            continue;
        }
        visible += character.isSpace() || category == QChar::Other_Control ? u' ' : character;
    }
    return visible.simplified();
}

NotesParagraph::Kind kindOf(const QTextBlock& block) {
    if (block.textList() != nullptr) {
        return NotesParagraph::Kind::bullet;
    }
    return block.blockFormat().headingLevel() > 0 ? NotesParagraph::Kind::heading
                                                  : NotesParagraph::Kind::text;
}

ReleaseNotes paragraphsOf(const QTextDocument& document) {
    ReleaseNotes paragraphs;
    for (auto block = document.begin(); block.isValid() && paragraphs.size() < mostParagraphs;
         block = block.next()) {
        const auto kind = kindOf(block);
        const auto lines = block.text().split(QChar(QChar::LineSeparator));
        for (const auto& line : lines) {
            if (auto text = visibleText(line); !text.isEmpty()) {
                paragraphs.push_back({kind, std::move(text)});
            }
        }
    }
    return paragraphs;
}

} // namespace

ReleaseNotes readReleaseNotes(const QString& notes, NotesFormat format) {
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    const auto bounded = notes.left(longestNotes);
    switch (format) {
    case NotesFormat::plain:
        document.setPlainText(bounded);
        break;
    case NotesFormat::markdown:
        document.setMarkdown(bounded, QTextDocument::MarkdownNoHTML);
        break;
    case NotesFormat::html:
        document.setHtml(structureOnly(bounded));
        break;
    }
    return paragraphsOf(document);
}

} // namespace orvantile::platform::desktop
