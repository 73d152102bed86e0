#pragma once

#include "storage/Platform.h"

#include <functional>
#include <string>
#include <vector>

namespace scorvane::testing {

// Makes file-system calls fail, for as long as it lives, as `decide` says: it sees every call
// (numbered from 1 in `calls`) and answers with the fault to inject, if any.
class FaultInjector {
public:
    struct Seen {
        platform::Call call;
        std::string name; // the file's name without its folder
        std::size_t size; // the bytes of a write
    };
    using Decide = std::function<platform::Injection(const platform::CallInfo&, int number)>;

    explicit FaultInjector(Decide decide = {}) : decide_(std::move(decide)) {
        platform::setHooks(&hooks_);
    }
    ~FaultInjector() { platform::setHooks(nullptr); }
    FaultInjector(const FaultInjector&) = delete;
    FaultInjector& operator=(const FaultInjector&) = delete;

    void decide(Decide decide) { decide_ = std::move(decide); }
    const std::vector<Seen>& calls() const { return calls_; }

    static std::string nameOf(const std::string& path) {
        const auto slash = path.find_last_of("/\\");
        return slash == std::string::npos ? path : path.substr(slash + 1);
    }

private:
    static platform::Injection before(void* context, const platform::CallInfo& call) {
        auto* self = static_cast<FaultInjector*>(context);
        self->calls_.push_back({call.call, nameOf(call.path), call.size});
        if (!self->decide_)
            return {};
        return self->decide_(call, static_cast<int>(self->calls_.size()));
    }

    Decide decide_;
    std::vector<Seen> calls_;
    platform::Hooks hooks_{this, &FaultInjector::before};
};

// A fault on the `n`-th call of the whole run; a write gets half of its bytes first, unless not
// `halfway`.
inline FaultInjector::Decide faultOnCall(int n, platform::Fault fault, bool halfway = true) {
    return [=](const platform::CallInfo& call, int number) {
        if (number != n)
            return platform::Injection{};
        return platform::Injection{fault, halfway ? call.size / 2 : 0};
    };
}

// A fault on every call of one kind to a file whose name ends in `suffix`, `times` times at most
// (each write gets half of its bytes first).
inline FaultInjector::Decide faultOn(platform::Call kind, std::string suffix, platform::Fault fault,
                                     int times = 1) {
    return [=, left = times](const platform::CallInfo& call, int) mutable {
        const std::string name = FaultInjector::nameOf(call.path);
        const bool matches = call.call == kind && name.size() >= suffix.size() &&
                             name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0;
        if (!matches || left == 0)
            return platform::Injection{};
        --left;
        return platform::Injection{fault, call.size / 2};
    };
}

} // namespace scorvane::testing
