// Message fan-out: a DispatchServer hands window messages to the clients that registered with it.
//
// A client has at most one server; both may be destroyed in any order, also while a message is
// being delivered. Who handled the last message is asked first next time.
#pragma once

#include <cstdint>

#include "toolbox/export.h"
#include "toolbox/links.h"
#include "toolbox/window_message.h"

class DispatchClient;

/// Hands messages on to its clients.
class TB_API DispatchServer {
  public:
    /// Which messages pass. Nothing passes with both bits set.
    enum DispatchMask : std::uint32_t {
        PassAll = 0,
        OnlyMouse = 1,    ///< message numbers 0x200 to 0x209
        OnlyCommands = 2  ///< WM_COMMAND
    };

    /// Without clients.
    explicit DispatchServer(DispatchMask mask = PassAll);
    // Both take the clients away from `source`: a client has one server.
    DispatchServer(const DispatchServer& source);
    DispatchServer& operator=(const DispatchServer& source);
    virtual ~DispatchServer();

    /// Offers the message to the clients that are registered when it is called, in their order.
    ///
    /// Without `broadcast` it stops at the first that sets the handled flag, and exchanges that
    /// client's place with the first one's. With it every client gets the message, with the flag
    /// cleared; it is cleared afterwards too. A client that unregisters during the delivery still
    /// gets the message, one that is destroyed does not; one that registers during it does not yet.
    /// The server may be destroyed too: the others get the message all the same.
    ///
    /// Returns what the last client returned; 0 when none was called, because there is none, the
    /// mask does not let the message pass or its handled flag was set already.
    virtual LRESULT dispatch(TarvMess& message, int broadcast);

    /// Takes the client from the server it had. 1 when it is registered here afterwards.
    int registerClient(DispatchClient* client) { return clients_.connectTo(client); }
    /// 0 when it was not registered here.
    int unregisterClient(DispatchClient* client) { return clients_.disconnect(client); }
    /// 1 when it is registered here.
    [[nodiscard]] int isClient(DispatchClient* client) const { return clients_.isInSet(client); }

  private:
    friend class DispatchClient;

    [[nodiscard]] bool passes(const TarvMess& message) const;

    DispatchMask mask_;
    Many<DispatchServer, DispatchClient> clients_;
    toolbox::detail::Watched<> life_;
};

/// Derived classes handle messages.
class TB_API DispatchClient {
  public:
    DispatchClient() : DispatchClient(nullptr) {}
    /// Registers at once, unless `server` is null.
    explicit DispatchClient(DispatchServer* server);
    DispatchClient(const DispatchClient&) = delete;
    DispatchClient& operator=(const DispatchClient&) = delete;
    virtual ~DispatchClient();

    /// Sets the message's handled flag when nobody else need see it.
    virtual LRESULT handleMessage(TarvMess& message) = 0;

    /// Leaves the server it had; null only leaves.
    int registerWithServer(DispatchServer* server) { return server_.connectTo(server); }
    /// 0 when it had no server.
    int unregisterWithServer() { return server_.disconnect(); }
    /// Null when it has none.
    [[nodiscard]] DispatchServer* getServer() const { return server_; }

  private:
    friend class DispatchServer;

    One<DispatchClient, DispatchServer> server_;
};
