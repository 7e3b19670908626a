#include "support/wayland/Bystander.h"

#include "support/desktop/Deadline.h"
#include "support/desktop/FileDescriptor.h"

#include <QFile>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <sys/mman.h>
#include <type_traits>
#include <unistd.h>
#include <vector>
#include <wayland-client.h>
#include <xdg-activation-v1.h>
#include <xdg-shell.h>

namespace orvantile::test {
namespace {

constexpr int side = 200;

} // namespace

struct Bystander::Protocol {
    explicit Protocol(const QString& compositorPath)
        : display(wl_display_connect(QFile::encodeName(compositorPath).constData())) {
        if (display == nullptr) {
            throw std::runtime_error("no compositor to make a window on");
        }
        bind();
        if (compositor == nullptr || memory == nullptr || shell == nullptr || seat == nullptr ||
            activation == nullptr) {
            throw std::runtime_error("the compositor lacks what a window needs");
        }
        listenToKeyboard();
        makeWindow();
    }

    Protocol(const Protocol&) = delete;
    Protocol& operator=(const Protocol&) = delete;

    /// The end of the connection is the end of the objects; what the library keeps of each has to go as well.
    ~Protocol() {
        for (auto* object : objects) {
            wl_proxy_destroy(object);
        }
        wl_display_disconnect(display);
    }

    template <typename Object>
    Object* keep(Object* object) {
        objects.push_back(reinterpret_cast<wl_proxy*>(object));
        return object;
    }

    void bind() {
        static constexpr wl_registry_listener listener{
            .global =
                [](void* data, wl_registry* list, std::uint32_t name, const char* interface, std::uint32_t) {
                    auto& self = *static_cast<Protocol*>(data);
                    const auto take = [&](auto*& object, const wl_interface& wanted) {
                        if (std::string_view(interface) == wanted.name && object == nullptr) {
                            object = self.keep(static_cast<std::remove_reference_t<decltype(object)>>(
                                wl_registry_bind(list, name, &wanted, 1)));
                        }
                    };
                    take(self.compositor, wl_compositor_interface);
                    take(self.memory, wl_shm_interface);
                    take(self.shell, xdg_wm_base_interface);
                    take(self.seat, wl_seat_interface);
                    take(self.activation, xdg_activation_v1_interface);
                },
            .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
        wl_registry_add_listener(keep(wl_display_get_registry(display)), &listener, this);
        wl_display_roundtrip(display);
    }

    void listenToKeyboard() {
        static constexpr wl_keyboard_listener listener{
            .keymap = [](void*, wl_keyboard*, std::uint32_t, int file, std::uint32_t) { ::close(file); },
            .enter =
                [](void* data, wl_keyboard*, std::uint32_t number, wl_surface*, wl_array*) {
                    static_cast<Protocol*>(data)->serial = number;
                    static_cast<Protocol*>(data)->focused = true;
                },
            .leave = [](void* data, wl_keyboard*, std::uint32_t,
                        wl_surface*) { static_cast<Protocol*>(data)->focused = false; },
            .key = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {},
            .modifiers = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                            std::uint32_t) {},
            .repeat_info = [](void*, wl_keyboard*, std::int32_t, std::int32_t) {}};
        wl_keyboard_add_listener(keep(wl_seat_get_keyboard(seat)), &listener, this);
    }

    void makeWindow() {
        static constexpr xdg_wm_base_listener shellListener{
            .ping = [](void*, xdg_wm_base* base, std::uint32_t ping) { xdg_wm_base_pong(base, ping); }};
        static constexpr xdg_surface_listener roleListener{
            .configure = [](void* data, xdg_surface* role, std::uint32_t number) {
                xdg_surface_ack_configure(role, number);
                static_cast<Protocol*>(data)->draw();
            }};
        static constexpr xdg_toplevel_listener windowListener{
            .configure = [](void*, xdg_toplevel*, std::int32_t, std::int32_t, wl_array*) {},
            .close = [](void*, xdg_toplevel*) {},
            .configure_bounds = [](void*, xdg_toplevel*, std::int32_t, std::int32_t) {},
            .wm_capabilities = [](void*, xdg_toplevel*, wl_array*) {}};
        xdg_wm_base_add_listener(shell, &shellListener, this);
        surface = keep(wl_compositor_create_surface(compositor));
        auto* role = keep(xdg_wm_base_get_xdg_surface(shell, surface));
        xdg_surface_add_listener(role, &roleListener, this);
        auto* window = keep(xdg_surface_get_toplevel(role));
        xdg_toplevel_add_listener(window, &windowListener, this);
        xdg_toplevel_set_title(window, "bystander");
        xdg_toplevel_set_app_id(window, "bystander");
        wl_surface_commit(surface);
    }

    void draw() {
        constexpr int bytes = side * side * 4;
        const FileDescriptor file(memfd_create("picture", MFD_CLOEXEC));
        if (::ftruncate(file.get(), bytes) != 0) {
            throw std::runtime_error("no memory for a picture");
        }
        auto* pool = wl_shm_create_pool(memory, file.get(), bytes);
        auto* buffer = keep(wl_shm_pool_create_buffer(pool, 0, side, side, side * 4, WL_SHM_FORMAT_XRGB8888));
        wl_surface_attach(surface, buffer, 0, 0);
        wl_shm_pool_destroy(pool);
        wl_surface_damage(surface, 0, 0, side, side);
        wl_surface_commit(surface);
    }

    [[nodiscard]] bool await(const std::function<bool()>& done) const {
        const QDeadlineTimer deadline(patience);
        while (!done()) {
            wl_display_flush(display);
            if (!awaitReadable(wl_display_get_fd(display), deadline) || wl_display_dispatch(display) < 0) {
                return false;
            }
        }
        return true;
    }

    wl_display* display;
    wl_compositor* compositor = nullptr;
    wl_shm* memory = nullptr;
    xdg_wm_base* shell = nullptr;
    wl_seat* seat = nullptr;
    xdg_activation_v1* activation = nullptr;
    wl_surface* surface = nullptr;
    std::uint32_t serial = 0; ///< of the latest focus
    bool focused = false;
    std::vector<wl_proxy*> objects;
};

Bystander::Bystander(const QString& compositor) : protocol(std::make_unique<Protocol>(compositor)) {}

Bystander::~Bystander() = default;

bool Bystander::awaitFocus() {
    return protocol->await([this] { return protocol->focused; });
}

bool Bystander::awaitLossOfFocus() {
    return protocol->await([this] { return !protocol->focused; });
}

QByteArray Bystander::activationToken() {
    static constexpr xdg_activation_token_v1_listener listener{
        .done = [](void* data, xdg_activation_token_v1*, const char* token) {
            *static_cast<QByteArray*>(data) = token;
        }};
    QByteArray answer;
    auto* request = xdg_activation_v1_get_activation_token(protocol->activation);
    xdg_activation_token_v1_add_listener(request, &listener, &answer);
    xdg_activation_token_v1_set_serial(request, protocol->serial, protocol->seat);
    xdg_activation_token_v1_set_surface(request, protocol->surface);
    xdg_activation_token_v1_commit(request);
    if (!protocol->await([&] { return !answer.isEmpty(); })) {
        throw std::runtime_error("the compositor gives no activation token");
    }
    xdg_activation_token_v1_destroy(request);
    return answer;
}

} // namespace orvantile::test
