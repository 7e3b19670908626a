#include "platform/linux/a11y/Toplevel.h"

#include <gmock/gmock.h>
#include <vector>

namespace orvantile::platform::a11y {
namespace {

using Qt::StringLiterals::operator""_s;

std::string choice(const std::vector<Toplevel>& toplevels, const QString& title, bool dialog = false) {
    const auto chosen = chooseToplevel(toplevels, {1, 42, title, dialog});
    return chosen.toplevel == nullptr ? "none" : chosen.toplevel->path + (chosen.certain ? "" : "?");
}

const Toplevel document{.path = "/document", .title = u"Letter - Writer"_s, .main = true};
const Toplevel other{.path = "/other", .title = u"Invoice - Writer"_s, .main = true};
const Toplevel saveAs{.path = "/saveAs", .title = u"Save As"_s, .dialog = true};

TEST(ToplevelChoice, goesByTheTitle) {
    EXPECT_EQ(choice({document, other, saveAs}, u"Invoice - Writer"_s), "/other");
    EXPECT_EQ(choice({document, other, saveAs}, u"  Invoice - Writer "_s), "/other");
    EXPECT_EQ(choice({document, other, saveAs}, u"Save As"_s, true), "/saveAs");
}

TEST(ToplevelChoice, tellsWindowsOfOneTitleApartByTheFocus) {
    auto twin = document;
    twin.path = "/twin";
    twin.active = true;
    EXPECT_EQ(choice({document, twin}, u"Letter - Writer"_s), "/twin");
    EXPECT_EQ(choice({document, other, twin}, u"*Letter - Writer"_s), "/twin?");
}

TEST(ToplevelChoice, guessesNothingBetweenTwoWindows) {
    EXPECT_EQ(choice({document, other}, u"Something else"_s), "none");
    EXPECT_EQ(choice({}, u"Letter - Writer"_s), "none");
}

TEST(ToplevelChoice, takesTheOnlyMainWindowUnderAnyTitle) {
    EXPECT_EQ(choice({document, saveAs}, u"*Letter - Writer"_s), "/document?");
    EXPECT_EQ(choice({document}, u""_s), "/document?");
}

TEST(ToplevelChoice, neverTakesAMainWindowForADialog) {
    EXPECT_EQ(choice({document}, u"Print"_s, true), "none");
    auto focused = document;
    focused.active = true;
    EXPECT_EQ(choice({focused}, u"Print"_s, true), "none");
    auto modal = saveAs;
    modal.active = true;
    EXPECT_EQ(choice({focused, modal}, u"Print"_s, true), "/saveAs?");
}

TEST(ToplevelChoice, emptyTitlesMatchNothing) {
    auto popup = document;
    popup.main = false;
    popup.title.clear();
    EXPECT_EQ(choice({popup, other}, u""_s), "/other?");
}

} // namespace
} // namespace orvantile::platform::a11y
