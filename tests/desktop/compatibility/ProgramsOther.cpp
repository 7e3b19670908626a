#include "desktop/compatibility/ProgramLists.h"

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

const auto wx = u"wxWidgets (GTK 3)"_s;
const auto office = u"VCL (GTK 3)"_s;
const auto swing = u"Java Swing"_s;
const auto bus = u"accessibility bus"_s;

/// Loads the bridge to the accessibility bus into the Java machine.
const std::pair<QString, QString> javaBridge{
    u"JAVA_TOOL_OPTIONS"_s,
    u"-Djavax.accessibility.assistive_technologies=org.GNOME.Accessibility.AtkWrapper "
    "-Xbootclasspath/a:/usr/share/java/java-atk-wrapper.jar"_s};

/// No greetings, and nothing from the network.
constexpr auto browserPreferences = R"(user_pref("browser.startup.page", 0);
user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.newtabpage.enabled", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("startup.homepage_welcome_url", "");
user_pref("startup.homepage_override_url", "");
user_pref("browser.startup.homepage_override.mstone", "ignore");
)";

constexpr auto browserWithMenuBar =
    R"({"chrome://browser/content/browser.xhtml":{"toolbar-menubar":{"autohide":"-moz-missing\n"}}})";

Program officeProgram(const QString& name, const QString& title, const QString& prepare) {
    return {.name = name,
            .title = u"LibreOffice "_s + title,
            .package = u"libreoffice-"_s + name,
            .toolkit = office,
            .source = bus,
            .command = u"soffice"_s,
            .arguments = {u"--"_s + name, u"--norestore"_s, u"--nologo"_s, u"--nofirststartwizard"_s},
            .windowClass = u"libreoffice-"_s + name,
            .prepare = prepare,
            .settle = 600ms};
}

} // namespace

std::vector<Program> otherPrograms() {
    return {
        officeProgram(u"writer"_s, u"Writer"_s, u"abc "_s),
        officeProgram(u"calc"_s, u"Calc"_s, u"1\n2\n"_s),
        officeProgram(u"impress"_s, u"Impress"_s, {}),
        {.name = u"audacity"_s,
         .title = u"Audacity"_s,
         .package = u"audacity"_s,
         .toolkit = wx,
         .source = bus,
         .command = u"audacity"_s,
         .windowClass = u"audacity"_s,
         .files = {{u".config/audacity/audacity.cfg"_s, "[GUI]\nShowSplashScreen=0\n"}},
         .settle = 500ms},
        {.name = u"filezilla"_s,
         .title = u"FileZilla"_s,
         .package = u"filezilla"_s,
         .toolkit = wx,
         .source = bus,
         .command = u"filezilla"_s,
         .windowClass = u"filezilla"_s},
        {.name = u"poedit"_s,
         .title = u"Poedit"_s,
         .package = u"poedit"_s,
         .toolkit = wx,
         .source = bus,
         .command = u"poedit"_s,
         .arguments = {u"~/words.po"_s},
         .windowClass = u"poedit"_s,
         .files = {{u"words.po"_s,
                    "msgid \"\"\nmsgstr \"\"\n\"Language: de\\n\"\n\"Content-Type: text/plain; "
                    "charset=UTF-8\\n\"\n\nmsgid \"Open\"\nmsgstr \"\"\n"}}},
        {.name = u"firefox"_s,
         .title = u"Firefox"_s,
         .package = u"firefox-esr"_s,
         .toolkit = u"Gecko"_s,
         .source = bus,
         .command = u"firefox-esr"_s,
         .arguments = {u"--no-remote"_s, u"--profile"_s, u"~/profile"_s, u"about:blank"_s},
         .windowClass = u"firefox-esr"_s,
         .opensMenusFirst = true,
         .files = {{u"profile/user.js"_s, browserPreferences},
                   {u"profile/xulstore.json"_s, browserWithMenuBar}},
         .settle = 700ms},
        {.name = u"chromium"_s,
         .title = u"Chromium"_s,
         .package = u"chromium"_s,
         .toolkit = u"Chromium"_s,
         .source = bus,
         .command = u"chromium"_s,
         .arguments = {u"--no-sandbox"_s, u"--no-first-run"_s, u"--password-store=basic"_s,
                       u"--force-renderer-accessibility"_s, u"about:blank"_s},
         .windowClass = u"chromium"_s,
         .settle = 700ms},
        {.name = u"swing"_s,
         .title = u"A Swing editor of the tests"_s,
         .package = u"openjdk-17-jre"_s,
         .toolkit = swing,
         .source = bus,
         .command = u"java"_s,
         .arguments = {QStringLiteral(ORVANTILE_SWING_PROGRAM)},
         .windowClass = u"com-sun-tools-javac-launcher-Main"_s,
         .variables = {javaBridge},
         .declared = {{u"New"_s, u"Ctrl+N"_s},
                      {u"Save"_s, u"Ctrl+S"_s},
                      {u"Save As…"_s, u"Ctrl+Shift+S"_s},
                      {u"Duplicate Line"_s, u"Ctrl+D"_s},
                      {u"Find…"_s, u"Ctrl+F"_s},
                      {u"Find Next"_s, u"F3"_s},
                      {u"Insert Date"_s, u"Ctrl+Alt+T"_s},
                      {u"Wrap Lines"_s, u"Alt+Shift+W"_s},
                      {u"Next Page"_s, u"Ctrl+PgDown"_s},
                      {u"Refresh"_s, u"F5"_s}},
         .settle = 500ms,
         .note = u"The bridge is not on by default; it is switched on here."_s},
        {.name = u"gpsprune"_s,
         .title = u"GpsPrune"_s,
         .package = u"gpsprune"_s,
         .toolkit = swing,
         .source = bus,
         .command = u"gpsprune"_s,
         .windowClass = u"tim-prune-GpsPrune"_s,
         .variables = {javaBridge},
         .settle = 500ms},
    };
}

} // namespace orvantile::test
