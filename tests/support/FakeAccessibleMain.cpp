// fake_accessible PIPE [option[=number]]…
#include "support/FakeAccessibleApplication.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <span>
#include <string_view>

namespace {

orvantile::test::Manners mannersFrom(std::span<char*> options) {
    orvantile::test::Manners manners;
    for (const std::string_view option : options) {
        const auto equals = option.find('=');
        const auto name = option.substr(0, equals);
        const int number =
            equals == std::string_view::npos ? 0 : std::stoi(std::string(option.substr(equals + 1)));
        if (name == "items") {
            manners.items = number;
        } else if (name == "title-bytes") {
            manners.titleBytes = number;
        } else if (name == "stop-after") {
            manners.stopAfter = number;
        } else if (name == "bound-items") {
            manners.boundItems = true;
        } else if (name == "no-collection") {
            manners.collection = false;
        } else if (name == "cyclic") {
            manners.cyclic = true;
        } else if (name == "wrong-types") {
            manners.wrongTypes = true;
        } else if (name == "garbage-bindings") {
            manners.garbageBindings = true;
        } else if (name == "invalid-utf8") {
            manners.invalidUtf8 = true;
        } else if (name == "silent") {
            manners.silent = true;
        } else {
            throw std::runtime_error("unknown option " + std::string(option));
        }
    }
    return manners;
}

} // namespace

int main(int argc, char* argv[]) {
    try {
        const std::span arguments(argv, static_cast<std::size_t>(argc));
        orvantile::test::FakeAccessibleApplication application(mannersFrom(arguments.subspan(2)));
        const int orders = open(arguments[1], O_RDWR | O_CLOEXEC | O_NONBLOCK);
        std::puts("ready");
        std::fflush(stdout);
        application.run(orders);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
