#include "macos/axfake/AxFake.h"
#include "platform/macos/accessibility/MacAccessibilityClient.h"

#include <array>
#include <gmock/gmock.h>

namespace orvantile::platform::macos {
namespace {

using Qt::StringLiterals::operator""_s;
using test::FakeElement;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

struct Heard {
    AccessibilityObserver* observer;
    QString notification;
    AttributeValue title;
    void* reference;
};

std::vector<Heard>& heard() {
    static std::vector<Heard> all;
    return all;
}

void listen(AccessibilityObserver& observer, const AccessibilityElement& element, const QString& notification,
            void* reference) {
    heard().push_back({&observer, notification, element.copyAttribute(u"AXTitle"), reference});
}

/// An element that no accessibility interface knows of.
class ForeignNode final : public AccessibilityNode {
public:
    [[nodiscard]] AttributeValue copyAttribute(QStringView) const override { return {}; }
};

const QString selected = u"AXMenuItemSelected"_s;
const QString opened = u"AXMenuOpened"_s;
const QString closed = u"AXMenuClosed"_s;

class ObserverTest : public ::testing::Test {
protected:
    ObserverTest() { heard().clear(); }

    std::unique_ptr<AccessibilityObserver> create() { return client.createObserver(process, &listen); }

    /// Listens for all three, on the main loop.
    std::unique_ptr<AccessibilityObserver> attach() {
        auto observer = create();
        const auto application = client.applicationElement(process);
        for (const auto& notification : {selected, opened, closed}) {
            EXPECT_TRUE(observer->addNotification(application, notification, this));
        }
        observer->addToMainLoop();
        return observer;
    }

    void post(const QString& notification, const QString& title = u"Save"_s) {
        fake.post(process, notification, std::make_shared<FakeElement>(FakeElement{{{u"AXTitle"_s, title}}}));
    }

    static constexpr pid_t process = 7;
    test::AxFake fake;
    MacAccessibilityClient client;
};

TEST_F(ObserverTest, isCreatedForTheProcess) {
    const auto observer = create();
    EXPECT_NE(observer, nullptr);
    EXPECT_THAT(fake.calls, ElementsAre("AXObserverCreate 7"));
}

TEST_F(ObserverTest, isNullWhenCreationFails) {
    for (const auto error : {kAXErrorCannotComplete, kAXErrorFailure, kAXErrorAPIDisabled}) {
        fake.unobservable[process] = error;
        EXPECT_EQ(create(), nullptr);
    }
    EXPECT_EQ(fake.liveObjects(), 0);
}

TEST_F(ObserverTest, isNullWhenCreationYieldsNothing) {
    fake.withoutObserver.insert(process);
    EXPECT_EQ(create(), nullptr);
}

TEST_F(ObserverTest, addsTheNotificationToTheElement) {
    const auto observer = create();
    const auto application = client.applicationElement(process);
    fake.calls.clear();
    EXPECT_TRUE(observer->addNotification(application, opened, nullptr));
    EXPECT_THAT(fake.calls, ElementsAre("AXObserverAddNotification 7 AXMenuOpened"));
}

TEST_F(ObserverTest, saysWhenANotificationIsRefused) {
    const auto observer = create();
    const auto application = client.applicationElement(process);
    fake.unservedNotifications.insert(opened);
    EXPECT_FALSE(observer->addNotification(application, opened, nullptr));
    fake.trusted = false;
    EXPECT_FALSE(observer->addNotification(application, selected, nullptr));
    fake.trusted = true;
    EXPECT_TRUE(observer->addNotification(application, selected, nullptr));
    EXPECT_FALSE(observer->addNotification(application, selected, nullptr)) << "it has been added already";
}

TEST_F(ObserverTest, aRefusedNotificationDisturbsNoOther) {
    const auto observer = create();
    const auto application = client.applicationElement(process);
    std::array<int, 3> references{};
    ASSERT_TRUE(observer->addNotification(application, selected, &references[0]));
    ASSERT_FALSE(observer->addNotification(application, selected, &references[1]));
    ASSERT_TRUE(observer->addNotification(application, opened, &references[2]));
    observer->addToMainLoop();
    post(selected);
    post(opened);
    fake.turnRunLoop();
    ASSERT_THAT(heard(), SizeIs(2));
    EXPECT_EQ(heard()[0].reference, &references[0]);
    EXPECT_EQ(heard()[1].reference, &references[2]);
}

TEST_F(ObserverTest, elementsOfOthersAreRefused) {
    const auto observer = create();
    fake.withoutElement.insert(process);
    const auto none = client.applicationElement(process);
    fake.calls.clear();
    EXPECT_FALSE(observer->addNotification(none, selected, nullptr));
    EXPECT_FALSE(
        observer->addNotification(AccessibilityElement(std::make_shared<ForeignNode>()), selected, nullptr));
    EXPECT_THAT(fake.calls, IsEmpty());
}

TEST_F(ObserverTest, aNotificationWhoseNameCannotBeMadeIsRefused) {
    const auto observer = create();
    const auto application = client.applicationElement(process);
    fake.calls.clear();
    fake.outOfMemory = true;
    EXPECT_FALSE(observer->addNotification(application, selected, nullptr));
    EXPECT_THAT(fake.calls, IsEmpty());
}

TEST_F(ObserverTest, handsOnWhatTheSystemSays) {
    const auto observer = attach();
    post(selected, u"Save"_s);
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_EQ(fake.turnRunLoop(), 1);
    ASSERT_THAT(heard(), SizeIs(1));
    EXPECT_EQ(heard()[0].observer, observer.get());
    EXPECT_EQ(heard()[0].notification, selected);
    EXPECT_EQ(heard()[0].title, AttributeValue(u"Save"_s));
    EXPECT_EQ(heard()[0].reference, this);
}

TEST_F(ObserverTest, eachNotificationHasItsReference) {
    constexpr int count = 300;
    const auto observer = create();
    const auto application = client.applicationElement(process);
    std::array<int, count> references{};
    for (int i = 0; i < count; ++i) {
        observer->addNotification(application, u"AX%1"_s.arg(i), &references.at(static_cast<std::size_t>(i)));
    }
    observer->addToMainLoop();
    for (int i = 0; i < count; ++i) {
        post(u"AX%1"_s.arg(i));
    }
    fake.turnRunLoop();
    ASSERT_THAT(heard(), SizeIs(count));
    for (int i = 0; i < count; ++i) {
        const auto& notification = heard()[static_cast<std::size_t>(i)];
        EXPECT_EQ(notification.notification, u"AX%1"_s.arg(i));
        EXPECT_EQ(notification.reference, &references.at(static_cast<std::size_t>(i)));
    }
}

TEST_F(ObserverTest, aNotificationWithoutContextIsDropped) {
    const auto observer = attach();
    fake.losesContexts = true;
    post(selected);
    EXPECT_EQ(fake.turnRunLoop(), 1);
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(ObserverTest, aNullReferenceIsHandedOn) {
    const auto observer = create();
    observer->addNotification(client.applicationElement(process), selected, nullptr);
    observer->addToMainLoop();
    post(selected);
    fake.turnRunLoop();
    ASSERT_THAT(heard(), SizeIs(1));
    EXPECT_EQ(heard()[0].reference, nullptr);
}

TEST_F(ObserverTest, listensOnTheMainLoopInTheDefaultMode) {
    const auto observer = attach();
    EXPECT_EQ(fake.calls.back(), "CFRunLoopAddSource 7 main kCFRunLoopDefaultMode");
    post(selected);
    EXPECT_EQ(fake.turnRunLoop(kCFRunLoopCommonModes), 0);
    EXPECT_EQ(fake.turnRunLoop(), 1);
    observer->removeFromMainLoop();
    EXPECT_EQ(fake.calls.back(), "CFRunLoopRemoveSource 7 main kCFRunLoopDefaultMode");
    EXPECT_EQ(fake.sourcesOnMainLoop(), 0);
}

TEST_F(ObserverTest, hearsNothingWhileItIsOffTheLoop) {
    const auto observer = attach();
    observer->removeFromMainLoop();
    post(selected);
    EXPECT_EQ(fake.turnRunLoop(), 0);
    observer->addToMainLoop();
    EXPECT_EQ(fake.turnRunLoop(), 1);
}

TEST_F(ObserverTest, releasingItEndsEverything) {
    auto observer = attach();
    post(selected);
    observer.reset();
    EXPECT_EQ(fake.calls.back(), "observer of 7 released");
    EXPECT_THAT(fake.calls, Not(Contains("CFRunLoopRemoveSource 7 main kCFRunLoopDefaultMode")));
    EXPECT_EQ(fake.sourcesOnMainLoop(), 0);
    EXPECT_EQ(fake.turnRunLoop(), 0);
    EXPECT_EQ(fake.liveObjects(), 0);
    EXPECT_THAT(heard(), IsEmpty());
}

} // namespace
} // namespace orvantile::platform::macos
