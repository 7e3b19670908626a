#include "support/desktop/ResourceUse.h"

#include "support/desktop/ProcessCost.h"
#include "support/desktop/SessionBusCalls.h"

#include <QDir>
#include <xcb/res.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

std::size_t entries(pid_t process, const QString& folder) {
    return static_cast<std::size_t>(QDir(u"/proc/%1/"_s.arg(process) + folder)
                                        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                                        .size());
}

/// The process behind a client of the server, which a resource of it names; 0 when unknown.
pid_t processOf(const XConnection& x, std::uint32_t resource) {
    const xcb_res_client_id_spec_t spec{resource, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const XReply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(x.get(), xcb_res_query_client_ids(x.get(), 1, &spec), nullptr));
    if (!reply) {
        return 0;
    }
    for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id)) {
        if (xcb_res_client_id_value_value_length(id.data) > 0) {
            return static_cast<pid_t>(*xcb_res_client_id_value_value(id.data));
        }
    }
    return 0;
}

std::size_t objectsOf(const XConnection& x, std::uint32_t client) {
    const XReply<xcb_res_query_client_resources_reply_t> reply(xcb_res_query_client_resources_reply(
        x.get(), xcb_res_query_client_resources(x.get(), client), nullptr));
    std::size_t count = 0;
    if (reply) {
        for (auto type = xcb_res_query_client_resources_types_iterator(reply.get()); type.rem > 0;
             xcb_res_type_next(&type)) {
            count += type.data->count;
        }
    }
    return count;
}

std::size_t serverObjects(pid_t process, const XConnection& x) {
    const XReply<xcb_res_query_clients_reply_t> clients(
        xcb_res_query_clients_reply(x.get(), xcb_res_query_clients(x.get()), nullptr));
    std::size_t count = 0;
    if (clients) {
        for (auto client = xcb_res_query_clients_clients_iterator(clients.get()); client.rem > 0;
             xcb_res_client_next(&client)) {
            if (processOf(x, client.data->resource_base) == process) {
                count += objectsOf(x, client.data->resource_base);
            }
        }
    }
    return count;
}

} // namespace

ResourceUse resourceUse(pid_t process, const XConnection& x, const QStringList& buses) {
    ResourceUse use{.residentMiB = memory(process).resident,
                    .descriptors = entries(process, u"fd"_s),
                    .threads = entries(process, u"task"_s),
                    .serverObjects = serverObjects(process, x)};
    for (const auto& address : buses) {
        const SessionBusCalls bus(address);
        for (const auto& connection : bus.connectionsOf(process)) {
            use.matchRules += bus.matchRules(connection);
        }
    }
    return use;
}

} // namespace orvantile::test
