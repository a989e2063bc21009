#include "platform/host.h"

namespace toolbox::platform {

Services& current() noexcept {
    static Services services = hostServices();
    return services;
}

}  // namespace toolbox::platform
