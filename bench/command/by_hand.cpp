#include "by_hand.h"

LRESULT deliverWithoutCopy(const std::vector<DispatchClient*>& clients, TarvMess& message) {
    LRESULT result = 0;
    for (DispatchClient* client : clients) {
        result = client->handleMessage(message);
        if (message.handled) break;
    }
    return result;
}

LRESULT deliver(const std::vector<DispatchClient*>& clients, TarvMess& message) {
    const std::vector<DispatchClient*> copy = clients;
    return deliverWithoutCopy(copy, message);
}
