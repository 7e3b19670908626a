#include "unit/updates/FeedText.h"

namespace orvantile::test {
namespace {

QByteArray element(const QByteArray& name, const QByteArray& text) {
    return text.isEmpty() ? QByteArray() : '<' + name + '>' + text + "</" + name + ">\n";
}

QByteArray attribute(const QByteArray& name, const QByteArray& text) {
    return text.isEmpty() ? QByteArray() : ' ' + name + "=\"" + text + '"';
}

} // namespace

QByteArray itemText(const FeedItem& item) {
    QByteArray text = "<item><title>Release</title>\n";
    text += element("sparkle:version", item.version);
    text += element("sparkle:shortVersionString", item.displayVersion);
    text += element("sparkle:minimumSystemVersion", item.minimumSystem);
    text += element("sparkle:channel", item.channel);
    text += element("sparkle:releaseNotesLink", item.notesPage);
    text += "<description><![CDATA[" + item.description + "]]></description>\n";
    if (item.hasEnclosure) {
        text += "<enclosure" + attribute("url", item.url) + attribute("length", item.length) +
                attribute("sparkle:edSignature", item.signature) +
                attribute("sparkle:os", item.operatingSystem) + " type=\"application/octet-stream\"/>\n";
    }
    return text + "</item>\n";
}

QByteArray feedText(const QByteArray& items) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">\n"
           "<channel><title>Orvantile</title>\n" +
           items + "</channel></rss>\n";
}

} // namespace orvantile::test
