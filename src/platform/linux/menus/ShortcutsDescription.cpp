#include "platform/linux/menus/ShortcutsDescription.h"

#include "platform/linux/keys/KeyBinding.h"

#include <QXmlStreamReader>

namespace orvantile::platform::menus {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr std::size_t mostShortcuts = 1'000;

/// One <property>.
struct Property {
    QString name;
    QString text;
    bool translatable = false;
    QByteArray context;
};

bool isTrue(QStringView text) {
    return text.startsWith(u'y', Qt::CaseInsensitive) || text.startsWith(u't', Qt::CaseInsensitive) ||
           text == u"1";
}

Property readProperty(QXmlStreamReader& xml) {
    const auto attributes = xml.attributes();
    Property property;
    property.name = attributes.value(u"name"_s).toString().replace(u'_', u'-');
    property.translatable = isTrue(attributes.value(u"translatable"_s));
    property.context = attributes.value(u"context"_s).toUtf8();
    property.text = xml.readElementText(QXmlStreamReader::SkipChildElements);
    return property;
}

/// What the properties of one line say.
struct Line {
    QString title;
    QString accelerators;
    std::string action;
    bool shown = true;
};

class Reader {
public:
    Reader(const QByteArray& description, const Translate& translate_)
        : xml(description),
          translate(translate_) {}

    std::vector<DescribedShortcut> read() {
        while (!xml.atEnd() && found.size() < mostShortcuts) {
            if (xml.readNext() != QXmlStreamReader::StartElement) {
                continue;
            }
            if (xml.name() == u"interface") {
                domain = xml.attributes().value(u"domain"_s).toUtf8();
            } else if (xml.name() == u"object" &&
                       xml.attributes().value(u"class"_s) == u"GtkShortcutsShortcut") {
                readLine();
            }
        }
        return found;
    }

private:
    void readLine() {
        Line line;
        while (xml.readNextStartElement()) {
            if (xml.name() == u"property") {
                take(readProperty(xml), line);
            } else {
                xml.skipCurrentElement();
            }
        }
        if (!line.shown || line.title.isEmpty()) {
            return;
        }
        for (const auto& each : line.accelerators.split(u' ', Qt::SkipEmptyParts)) {
            // A range of keys, keys one after the other, keys together.
            if (each.contains(u"..."_s) || each.contains(u'&') || each.indexOf(u'+') > 0) {
                continue;
            }
            if (const auto accelerator = keys::parseAccelerator(each)) {
                found.push_back({line.title, *accelerator, line.action});
            }
        }
    }

    void take(const Property& property, Line& line) const {
        if (property.name == u"title") {
            const auto text = property.text.toUtf8();
            line.title =
                (property.translatable ? translate(domain, property.context, text) : property.text).trimmed();
        } else if (property.name == u"accelerator") {
            line.accelerators = property.text;
        } else if (property.name == u"action-name") {
            line.action = property.text.toStdString();
        } else if (property.name == u"visible") {
            line.shown = line.shown && isTrue(property.text);
        } else if (property.name == u"direction") {
            line.shown = line.shown && property.text != u"rtl";
        }
    }

    QXmlStreamReader xml;
    const Translate& translate;
    QByteArray domain;
    std::vector<DescribedShortcut> found;
};

} // namespace

std::vector<DescribedShortcut> describedShortcuts(const QByteArray& description, const Translate& translate) {
    return Reader(description, translate).read();
}

} // namespace orvantile::platform::menus
