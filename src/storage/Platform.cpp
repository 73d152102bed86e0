#include "Platform.h"

#include <cstdlib>
#include <utility>

namespace scorvane::platform {

namespace {
const Hooks* g_hooks = nullptr;
} // namespace

File& File::operator=(File&& other) noexcept {
    if (this != &other) {
        close();
        handle_ = std::exchange(other.handle_, kNone);
        path_ = std::move(other.path_);
    }
    return *this;
}

void File::adopt(std::intptr_t handle, std::string path) {
    close();
    handle_ = handle;
    path_ = std::move(path);
}

void setHooks(const Hooks* hooks) {
    g_hooks = hooks;
}

namespace detail {

Injection ask(const CallInfo& call) {
    if (g_hooks == nullptr || g_hooks->before == nullptr)
        return {};
    return g_hooks->before(g_hooks->context, call);
}

void crash() {
    // No destructors, no buffered output: the disk is left exactly as a killed process leaves it.
    std::_Exit(kCrashExitCode);
}

} // namespace detail

} // namespace scorvane::platform
