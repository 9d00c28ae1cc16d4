#include "platform/linux/x11/WindowOwner.h"

#include <xcb/res.h>

namespace onlinux {

std::vector<std::uint32_t> OwnersOf(XServer& server, xcb_window_t window) {
  auto owners = server.ReadNumbers(window, "_NET_WM_PID");
  const auto* extension = ::xcb_get_extension_data(server.Line(), &xcb_res_id);
  if (!extension || !extension->present) return owners;
  const xcb_res_client_id_spec_t wanted{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const Reply<xcb_res_query_client_ids_reply_t> reply(
      ::xcb_res_query_client_ids_reply(server.Line(), ::xcb_res_query_client_ids(server.Line(), 1, &wanted), nullptr));
  if (!reply) return owners;
  for (auto ids = ::xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
       ::xcb_res_client_id_value_next(&ids))
    if (::xcb_res_client_id_value_value_length(ids.data) > 0)
      owners.push_back(*::xcb_res_client_id_value_value(ids.data));
  return owners;
}

}  // namespace onlinux
