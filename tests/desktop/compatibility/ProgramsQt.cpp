#include "desktop/compatibility/ProgramLists.h"

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

const auto qt5 = u"Qt 5"_s;
const auto qt6 = u"Qt 6"_s;
const auto kde = u"KDE Frameworks 5"_s;
const auto helper = u"helper"_s;
constexpr auto inside = TruthSource::insideQt;

} // namespace

std::vector<Program> qtPrograms() {
    return {
        {.name = u"featherpad"_s,
         .title = u"FeatherPad"_s,
         .package = u"featherpad"_s,
         .toolkit = qt5,
         .source = helper,
         .truth = inside,
         .command = u"featherpad"_s,
         .arguments = {u"--standalone"_s, u"~/notes.txt"_s},
         .windowClass = u"featherpad"_s,
         .prepare = u"abc "_s},
        {.name = u"qpdfview"_s,
         .title = u"qpdfview"_s,
         .package = u"qpdfview"_s,
         .toolkit = qt5,
         .source = helper,
         .truth = inside,
         .command = u"qpdfview"_s,
         .arguments = {u"~/pages.pdf"_s},
         .windowClass = u"qpdfview"_s},
        {.name = u"qterminal"_s,
         .title = u"QTerminal"_s,
         .package = u"qterminal"_s,
         .toolkit = qt5,
         .source = helper,
         .truth = inside,
         .command = u"qterminal"_s,
         .windowClass = u"qterminal"_s,
         .note = u"A terminal."_s},
        {.name = u"kate"_s,
         .title = u"Kate"_s,
         .package = u"kate"_s,
         .toolkit = kde,
         .source = helper,
         .truth = inside,
         .command = u"kate"_s,
         .arguments = {u"--startanon"_s, u"--block"_s, u"~/notes.txt"_s},
         .windowClass = u"kate"_s,
         .prepare = u"abc "_s},
        {.name = u"okular"_s,
         .title = u"Okular"_s,
         .package = u"okular"_s,
         .toolkit = kde,
         .source = helper,
         .truth = inside,
         .command = u"okular"_s,
         .arguments = {u"~/pages.pdf"_s},
         .windowClass = u"okular"_s},
        {.name = u"dolphin"_s,
         .title = u"Dolphin"_s,
         .package = u"dolphin"_s,
         .toolkit = kde,
         .source = helper,
         .truth = inside,
         .command = u"dolphin"_s,
         .arguments = {u"~"_s},
         .windowClass = u"dolphin"_s},
        {.name = u"focuswriter"_s,
         .title = u"FocusWriter"_s,
         .package = u"focuswriter"_s,
         .toolkit = qt6,
         .source = helper,
         .truth = inside,
         .command = u"focuswriter"_s,
         .windowClass = u"focuswriter"_s,
         .prepare = u"abc "_s,
         .note = u"Pasting from an empty clipboard crashes it, with and without the helper."_s},
        {.name = u"assistant"_s,
         .title = u"Qt Assistant"_s,
         .package = u"assistant-qt6"_s,
         .toolkit = qt6,
         .source = helper,
         .truth = inside,
         .command = u"/usr/lib/qt6/bin/assistant"_s,
         .windowClass = u"assistant"_s},
        {.name = u"designer"_s,
         .title = u"Qt Designer"_s,
         .package = u"designer-qt6"_s,
         .toolkit = qt6,
         .source = helper,
         .truth = inside,
         .command = u"/usr/lib/qt6/bin/designer"_s,
         .arguments = {u"~/form.ui"_s},
         .windowClass = u"designer"_s,
         .files =
             {{u"form.ui"_s,
               "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ui version=\"4.0\"><class>Form</class>"
               "<widget class=\"QWidget\" name=\"Form\"><property name=\"geometry\"><rect><x>0</x><y>0</y>"
               "<width>200</width><height>100</height></rect></property>"
               "<widget class=\"QPushButton\" name=\"button\"/></widget></ui>\n"}}},
        {.name = u"linguist"_s,
         .title = u"Qt Linguist"_s,
         .package = u"linguist-qt6"_s,
         .toolkit = qt6,
         .source = helper,
         .truth = inside,
         .command = u"/usr/lib/qt6/bin/linguist"_s,
         .arguments = {u"~/words.ts"_s},
         .windowClass = u"linguist"_s,
         .files =
             {{u"words.ts"_s,
               "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n<TS version=\"2.1\" "
               "language=\"de_DE\">\n<context><name>Window</name>\n<message><source>Open</source>"
               "<translation type=\"unfinished\"></translation></message>\n"
               "<message><source>Close</source><translation type=\"unfinished\"></translation></message>\n"
               "</context>\n</TS>\n"}}},
        {.name = u"qpwgraph"_s,
         .title = u"qpwgraph"_s,
         .package = u"qpwgraph"_s,
         .toolkit = qt6,
         .source = helper,
         .truth = inside,
         .command = u"qpwgraph"_s,
         .windowClass = u"qpwgraph"_s},
    };
}

} // namespace orvantile::test
