#include "macos/shell/fakes/Desktop.h"

#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/recording/CallRecorder.h"
#include "macos/shell/runtime/ObjectTable.h"

extern "C" void* objc_autoreleasePoolPush();
extern "C" void objc_autoreleasePoolPop(void* pool);

namespace orvantile::test::desktop {

State& state() {
    static State shared;
    return shared;
}

Pool::Pool() : pool(objc_autoreleasePoolPush()) {}

Pool::~Pool() {
    objc_autoreleasePoolPop(pool);
}

std::size_t liveObjects() {
    return objc::ObjectTable::shared().count();
}

std::string liveObjectNames() {
    return objc::ObjectTable::shared().describe();
}

void reset() {
    {
        const Pool pool;
        state() = {};
        state().screens = {{0, 0, 1440, 900, 0, 50, 1440, 825, 2, 60}};
        state().soundNames = {"Pop", "Tink", "Glass", "Ping", "Morse", "Purr"};
        state().symbolNames = {"keyboard", "keyboard.fill"};
    }
    CallRecorder::shared().clear();
}

void setAcceptsAddresses(bool accepts) {
    state().acceptsAddresses = accepts;
}

} // namespace orvantile::test::desktop
