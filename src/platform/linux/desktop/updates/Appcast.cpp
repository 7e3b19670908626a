#include "platform/linux/desktop/updates/Appcast.h"

#include "platform/linux/desktop/updates/TagScan.h"

#include <QXmlStreamReader>

namespace orvantile::platform::desktop {

using Qt::StringLiterals::operator""_s;

namespace {

constexpr QStringView updateNamespace = u"http://www.andymatuschak.org/xml-namespaces/sparkle";

constexpr int mostAttributes = 64;

/// Reads one feed. Every loop ends at the first error of the reader.
class AppcastReader {
public:
    explicit AppcastReader(const QByteArray& feed) : xml(feed) {}

    std::optional<std::vector<AppcastItem>> read() {
        if (!nextChild() || !isPlain(u"rss") || xml.attributes().value(u"version"_s) != u"2.0") {
            return std::nullopt;
        }
        bool hasChannel = false;
        while (nextChild()) {
            if (isPlain(u"channel") && !hasChannel) {
                hasChannel = true;
                readChannel();
            } else {
                xml.skipCurrentElement();
            }
        }
        while (!xml.atEnd() && !xml.hasError()) {
            xml.readNext();
        }
        if (xml.hasError() || !hasChannel) {
            return std::nullopt;
        }
        return std::move(items);
    }

private:
    /// Like readNextStartElement, but a document type declaration is an error.
    bool nextChild() {
        while (xml.readNext() != QXmlStreamReader::Invalid) {
            if (xml.isDTD()) {
                xml.raiseError();
                return false;
            }
            if (xml.isEndElement() || xml.isStartElement()) {
                return xml.isStartElement();
            }
        }
        return false;
    }

    [[nodiscard]] bool isPlain(QStringView name) const {
        return xml.namespaceUri().isEmpty() && xml.name() == name;
    }

    [[nodiscard]] bool isUpdate(QStringView name) const {
        return xml.namespaceUri() == updateNamespace && xml.name() == name;
    }

    [[nodiscard]] QString updateAttribute(QStringView name) const {
        return xml.attributes().value(updateNamespace.toString(), name.toString()).toString();
    }

    // Child elements are skipped rather than included: including them recurses once per level.
    QString text() { return xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed(); }

    void readChannel() {
        while (nextChild()) {
            if (isPlain(u"item")) {
                readItem();
            } else {
                xml.skipCurrentElement();
            }
        }
    }

    void readItem() {
        AppcastItem item;
        while (nextChild()) {
            if (isPlain(u"description")) {
                item.notesFormat = notesFormat(updateAttribute(u"format"));
                item.notes = text();
            } else if (isPlain(u"enclosure") && !item.enclosure) {
                readEnclosure(item);
            } else if (isUpdate(u"version")) {
                item.version = text();
            } else if (isUpdate(u"shortVersionString")) {
                item.displayVersion = text();
            } else if (isUpdate(u"minimumSystemVersion")) {
                item.minimumSystem = text();
            } else if (isUpdate(u"channel")) {
                item.channel = text();
            } else if (isUpdate(u"releaseNotesLink") || isUpdate(u"fullReleaseNotesLink")) {
                item.notesPage = QUrl(text(), QUrl::StrictMode);
            } else {
                xml.skipCurrentElement();
            }
        }
        if (item.displayVersion.isEmpty()) {
            item.displayVersion = item.version;
        }
        if (!xml.hasError() && !item.version.isEmpty()) {
            items.push_back(std::move(item));
        }
    }

    void readEnclosure(AppcastItem& item) {
        AppcastEnclosure enclosure;
        const auto attributes = xml.attributes();
        enclosure.url = QUrl(attributes.value(u"url"_s).toString(), QUrl::StrictMode);
        bool isNumber = false;
        const auto length = attributes.value(u"length"_s).toLongLong(&isNumber);
        enclosure.length = isNumber ? length : -1;
        const auto signature = QByteArray::fromBase64Encoding(updateAttribute(u"edSignature").toLatin1(),
                                                              QByteArray::AbortOnBase64DecodingErrors);
        enclosure.signature = signature ? *signature : QByteArray();
        enclosure.operatingSystem = updateAttribute(u"os");
        // Elements of the item come first; older feeds state versions at the enclosure only.
        if (item.version.isEmpty()) {
            item.version = updateAttribute(u"version");
        }
        if (item.displayVersion.isEmpty()) {
            item.displayVersion = updateAttribute(u"shortVersionString");
        }
        item.enclosure = std::move(enclosure);
        xml.skipCurrentElement();
    }

    static NotesFormat notesFormat(const QString& name) {
        return name == u"plain-text" ? NotesFormat::plain
               : name == u"markdown" ? NotesFormat::markdown
                                     : NotesFormat::html;
    }

    QXmlStreamReader xml;
    std::vector<AppcastItem> items;
};

} // namespace

std::optional<std::vector<AppcastItem>> readAppcast(const QByteArray& feed) {
    return hasOrdinaryTags(feed, mostAttributes) ? AppcastReader(feed).read() : std::nullopt;
}

} // namespace orvantile::platform::desktop
