// Delivery of a message to clients that come and go while it is delivered.
#include "toolbox/dispatch.h"

#include <algorithm>
#include <vector>

namespace {

constexpr UINT kFirstMouse = WM_MOUSEMOVE;
constexpr UINT kLastMouse = WM_MOUSEMOVE + 9;

/// The clients that still have to get the message of one dispatch, also those that unregister
/// meanwhile. Deliveries nest when a client dispatches in its turn; all that are under way are
/// linked, so that a client that is destroyed can be taken out of each.
class Delivery {
  public:
    explicit Delivery(const Many<DispatchServer, DispatchClient>& clients)
        : clients_(static_cast<std::size_t>(clients.getCount())), outer_(innermost) {
        clients.copyTo(clients_.data());
        innermost = this;
    }
    ~Delivery() { innermost = outer_; }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;

    /// Null: destroyed meanwhile.
    [[nodiscard]] const std::vector<DispatchClient*>& clients() const { return clients_; }

    static void forget(DispatchClient* client) {
        for (Delivery* each = innermost; each; each = each->outer_)
            std::replace(each->clients_.begin(), each->clients_.end(), client,
                         static_cast<DispatchClient*>(nullptr));
    }

  private:
    static inline Delivery* innermost = nullptr;

    std::vector<DispatchClient*> clients_;
    Delivery* outer_;
};

}  // namespace

DispatchServer::DispatchServer(DispatchMask mask)
    : mask_(mask), clients_(this, &DispatchClient::server_, 5) {}

DispatchServer::DispatchServer(const DispatchServer& source) : DispatchServer(source.mask_) {
    clients_ = source.clients_;
}

DispatchServer& DispatchServer::operator=(const DispatchServer& source) = default;

DispatchServer::~DispatchServer() = default;

bool DispatchServer::passes(const TarvMess& message) const {
    const UINT number = message.message;
    if ((mask_ & OnlyMouse) && (number < kFirstMouse || number > kLastMouse)) return false;
    return !(mask_ & OnlyCommands) || number == WM_COMMAND;
}

LRESULT DispatchServer::dispatch(TarvMess& message, int broadcast) {
    if (message.handled || !passes(message)) return 0;
    const toolbox::detail::Watch self(life_);
    Delivery delivery(clients_);
    LRESULT result = 0;
    for (DispatchClient* client : delivery.clients()) {
        if (!client) continue;
        result = client->handleMessage(message);
        if (broadcast) {
            message.handled = 0;
        } else if (message.handled) {
            if (!self.gone()) clients_.swap(clients_.getIndex(client), 0);
            break;
        }
    }
    return result;
}

DispatchClient::DispatchClient(DispatchServer* server)
    : server_(this, &DispatchServer::clients_, nullptr, server) {}

DispatchClient::~DispatchClient() {
    Delivery::forget(this);
}
