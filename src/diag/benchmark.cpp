// A stopwatch of named events. Its numbers are those of its documented table: whole seconds.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <ostream>
#include <string_view>

#include "base/template_text.h"
#include "toolbox/diagnostics.h"
#include "toolbox/platform.h"

namespace {

constexpr std::int32_t kFirstCapacity = 5;
constexpr std::int32_t kGrowth = 6;
constexpr std::int32_t kReadingsPerSecond = 1000;

}  // namespace

Benchmark::Benchmark(char active)
    : active_(active),
      capacity_(kFirstCapacity),
      events_(new (std::nothrow) Event[kFirstCapacity]()) {
    static_assert(sizeof(Event) == 48);
    if (!events_) capacity_ = 0;
}

Benchmark::~Benchmark() = default;

void Benchmark::reset() {
    events_.reset();
    start_ = count_ = capacity_ = 0;
}

bool Benchmark::makeRoom() {
    if (count_ < capacity_) return true;
    const std::int32_t capacity = count_ + kGrowth;
    std::unique_ptr<Event[]> events(new (std::nothrow) Event[static_cast<std::size_t>(capacity)]());
    if (!events) {
        errno = ENOMEM;
        std::perror("out of memory for event array");
        return false;
    }
    std::copy_n(events_.get(), count_, events.get());
    events_ = std::move(events);
    capacity_ = capacity;
    return true;
}

void Benchmark::set(const char* name) {
    if (!active_) return;
    const std::uint32_t now = toolbox::platform::current().system->clockMilliseconds();
    if (!makeRoom()) return;
    Event& event = events_[static_cast<std::size_t>(count_)];
    const std::string_view given = name ? name : "";
    const std::size_t kept = given.copy(event.name, sizeof event.name - 1);
    event.name[kept] = '\0';
    if (count_ == 0) start_ = static_cast<std::int32_t>(now);
    // The clock may have passed its end since.
    const auto elapsed = static_cast<std::int32_t>(now - static_cast<std::uint32_t>(start_));
    const std::int32_t wholeSeconds = elapsed / kReadingsPerSecond;
    event.time = wholeSeconds;
    ++count_;
}

template <class Write>
void Benchmark::printLines(const Write& write) const {
    if (count_ == 0) return;
    write(std::string_view("     EVENT                      TIME            DELTA\n\n"));
    for (std::int32_t i = 0; i < count_; ++i) {
        const Event* event = &events_[static_cast<std::size_t>(i)];
        char line[128];
        std::size_t length = 0;
        if (i > 0) {
            length = toolbox::base::printTemplate(line, sizeof line,
                                                  "%-22s                          %5.2lf\n", "",
                                                  event->time - event[-1].time);
            write(std::string_view(line, length));
        }
        length = toolbox::base::printTemplate(line, sizeof line, "%-22s          %5.2lf\n",
                                              event->name, event->time);
        write(std::string_view(line, length));
    }
}

void Benchmark::print(std::FILE* out) const {
    if (!out) return;
    printLines([out](std::string_view text) { std::fwrite(text.data(), 1, text.size(), out); });
}

void Benchmark::print(std::ostream& out) const {
    printLines([&out](std::string_view text) { out << text; });
}
