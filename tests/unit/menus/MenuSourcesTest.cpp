#include "platform/linux/menus/MenuSources.h"

#include "platform/linux/menus/CommandList.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::platform::menus {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr keys::Accelerator controlS{{.control = true}, 0x73};
constexpr keys::Accelerator controlT{{.control = true}, 0x74};

class FakeSource final : public a11y::MenuModel {
public:
    [[nodiscard]] bool isAvailable() const override { return available; }

    void follow(std::int32_t process) override { followed = process; }

    void windowActivated(const session::ActiveWindow& window) override { active = window.handle; }

    void menuClosed() override { ++closed; }

    [[nodiscard]] a11y::MenuAnswer commandFor(const session::ActiveWindow&,
                                              const keys::Candidates& candidates) override {
        ++asked;
        return answer(commands, candidates);
    }

    [[nodiscard]] a11y::MenuReach reach(std::int32_t) const override {
        return {.items = items, .accelerators = commands.size(), .asked = wasAsked};
    }

    Commands commands;
    std::size_t items = 0;
    bool available = false;
    std::int32_t followed = 0;
    std::uint64_t active = 0;
    int closed = 0;
    int asked = 0;
    bool wasAsked = false;
};

class Sources : public ::testing::Test {
protected:
    static std::vector<std::unique_ptr<a11y::MenuModel>> two(FakeSource*& first, FakeSource*& second) {
        std::vector<std::unique_ptr<a11y::MenuModel>> all;
        for (auto* each : {&first, &second}) {
            auto made = std::make_unique<FakeSource>();
            *each = made.get();
            all.push_back(std::move(made));
        }
        return all;
    }

    QString fired(const keys::Accelerator& keys) {
        const auto told = sources.commandFor({}, {keys});
        const auto title = told.command ? told.command->copyAttribute(u"AXTitle") : AttributeValue();
        const auto* text = std::get_if<QString>(&title);
        return text != nullptr ? *text : u"nothing"_s;
    }

    FakeSource* first = nullptr;
    FakeSource* second = nullptr;
    MenuSources sources{two(first, second)};
};

TEST_F(Sources, askTheNextWhenOneDoesNotKnowTheKeys) {
    first->commands = {{u"Save"_s, controlS, true}};
    second->commands = {{u"Store"_s, controlS, true}, {u"New Tab"_s, controlT, true}};
    EXPECT_EQ(fired(controlS), u"Save"_s);
    EXPECT_EQ(second->asked, 0);
    EXPECT_EQ(fired(controlT), u"New Tab"_s);
}

TEST_F(Sources, believeTheFirstThatACommandIsDisabled) {
    first->commands = {{u"Save"_s, controlS, false}};
    second->commands = {{u"Store"_s, controlS, true}};
    EXPECT_EQ(fired(controlS), u"nothing"_s);
}

TEST_F(Sources, tellAllOfThemWhatHappens) {
    sources.follow(7);
    sources.windowActivated({.handle = 8});
    sources.menuClosed();
    for (const auto* each : {first, second}) {
        EXPECT_EQ(each->followed, 7);
        EXPECT_EQ(each->active, 8U);
        EXPECT_EQ(each->closed, 1);
    }
}

TEST_F(Sources, areAvailableOnceTheFirstIs) {
    int told = 0;
    sources.onAvailable = [&] { ++told; };
    second->available = true;
    EXPECT_FALSE(sources.isAvailable());
    first->available = true;
    EXPECT_TRUE(sources.isAvailable());
    first->onAvailable();
    EXPECT_EQ(told, 1);
    first->onAvailable();
    EXPECT_EQ(told, 2) << "and again when it was lost meanwhile";
}

TEST_F(Sources, reachAsFarAsTheBestOfThem) {
    first->items = 100;
    EXPECT_EQ(sources.reach(7).items, 100U);
    EXPECT_EQ(sources.reach(7).accelerators, 0U);
    second->items = 3;
    second->commands = {{u"Store"_s, controlS, true}};
    EXPECT_EQ(sources.reach(7).items, 3U);
    EXPECT_EQ(sources.reach(7).accelerators, 1U);
    EXPECT_FALSE(sources.reach(7).asked);
    first->wasAsked = true;
    EXPECT_TRUE(sources.reach(7).asked);
}

} // namespace
} // namespace orvantile::platform::menus
