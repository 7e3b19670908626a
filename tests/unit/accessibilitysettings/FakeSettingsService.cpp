#include "unit/accessibilitysettings/FakeSettingsService.h"

#include "platform/linux/desktop/bus/BusHandles.h"

#include <future>
#include <poll.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <unistd.h>

namespace orvantile::test {
namespace {

using platform::desktop::BusHandle;
using platform::desktop::SlotHandle;
using Qt::StringLiterals::operator""_s;

} // namespace

PrivateBus::PrivateBus() {
    auto environment = QProcessEnvironment::systemEnvironment();
    daemon = std::make_unique<ChildProcess>(
        Command{u"dbus-daemon"_s,
                {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--address=unix:path="_s + path(u"bus"_s),
                 u"--print-address"_s},
                environment,
                directory.path()});
    const auto line = daemon->awaitLine();
    if (!line) {
        throw std::runtime_error("no message bus: " + daemon->standardError().toStdString());
    }
    busAddress = QString::fromUtf8(*line);
}

class FakeSettingsService::Inside {
public:
    Inside(const QString& address, const QString& name, Manner manner_)
        : manner(manner_),
          stop(::eventfd(0, EFD_CLOEXEC)) {
        sd_bus* created = nullptr;
        if (sd_bus_new(&created) < 0) {
            throw std::runtime_error("no bus connection");
        }
        bus.reset(created);
        sd_bus_slot* added = nullptr;
        if (sd_bus_set_address(created, address.toUtf8().constData()) < 0 ||
            sd_bus_set_bus_client(created, 1) < 0 || sd_bus_start(created) < 0 ||
            sd_bus_add_filter(created, &added, received, this) < 0 ||
            sd_bus_request_name(created, name.toLatin1().constData(), 0) < 0) {
            throw std::runtime_error("cannot serve on the bus");
        }
        filter.reset(added);
    }

    void run() {
        for (;;) {
            while (sd_bus_process(bus.get(), nullptr) > 0) {
            }
            std::array<pollfd, 2> watched{{{sd_bus_get_fd(bus.get()), POLLIN, 0}, {stop.get(), POLLIN, 0}}};
            if (::poll(watched.data(), watched.size(), -1) < 0 || watched[1].revents != 0) {
                return;
            }
        }
    }

    void end() const { static_cast<void>(::eventfd_write(stop.get(), 1)); }

    std::promise<QStringList> asked;

private:
    static int received(sd_bus_message* message, void* data, sd_bus_error*) {
        auto& self = *static_cast<Inside*>(data);
        if (sd_bus_message_is_method_call(message, "org.freedesktop.Application", "ActivateAction") <= 0) {
            return 0;
        }
        self.asked.set_value(read(message));
        if (self.manner == Manner::answers) {
            sd_bus_reply_method_return(message, "");
        } else if (self.manner == Manner::refuses) {
            sd_bus_reply_method_errorf(message, SD_BUS_ERROR_UNKNOWN_METHOD, "no such action");
        }
        return 1;
    }

    static QStringList read(sd_bus_message* message) {
        const char* action = "";
        const char* panel = "";
        sd_bus_message_read(message, "s", &action);
        int count = 0;
        sd_bus_message_enter_container(message, 'a', "v");
        while (sd_bus_message_at_end(message, 0) == 0) {
            ++count;
            sd_bus_message_enter_container(message, 'v', "(sav)");
            sd_bus_message_enter_container(message, 'r', "sav");
            sd_bus_message_read(message, "s", &panel);
            sd_bus_message_skip(message, "av");
            sd_bus_message_exit_container(message);
            sd_bus_message_exit_container(message);
        }
        sd_bus_message_exit_container(message);
        QStringList told{QString::fromUtf8(sd_bus_message_get_path(message)), QString::fromUtf8(action),
                         QString::fromUtf8(panel), QString::number(count)};
        sd_bus_message_enter_container(message, 'a', "{sv}");
        const char* key = nullptr;
        while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
            const char* value = "";
            sd_bus_message_read(message, "sv", &key, "s", &value);
            told += QString::fromUtf8(key) + u'=' + QString::fromUtf8(value);
            sd_bus_message_exit_container(message);
        }
        return told;
    }

    Manner manner;
    FileDescriptor stop;
    BusHandle bus;
    SlotHandle filter;
};

FakeSettingsService::FakeSettingsService(const QString& address, const QString& name, Manner manner)
    : inside(std::make_unique<Inside>(address, name, manner)),
      thread([this] { inside->run(); }) {}

FakeSettingsService::~FakeSettingsService() {
    inside->end();
    thread.join();
}

QStringList FakeSettingsService::awaitAsked() const {
    auto future = inside->asked.get_future();
    return future.wait_for(patience) == std::future_status::ready ? future.get()
                                                                  : QStringList{u"nothing was asked"_s};
}

} // namespace orvantile::test
