#include "Platform.h"

#include <cstdlib>
#include <utility>
#include <vector>

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

std::string normalPath(const std::string& path) {
    if (path.empty())
        return path;
    const bool windows = isWindows();
    std::string root;
    std::size_t i = 0;
    if (windows && path.size() >= 2 && path[1] == ':') {
        root = path.substr(0, 2);
        i = 2;
    }
    if (i < path.size() && isSeparator(path[i])) {
        // A Windows network path ("\\server\share") keeps both its separators.
        const bool network = windows && root.empty() && path.size() > 1 && isSeparator(path[1]);
        root += network ? "//" : "/";
        while (i < path.size() && isSeparator(path[i]))
            ++i;
    }
    const bool fromRoot = !root.empty() && root.back() == '/';
    std::vector<std::string> parts;
    bool trailing = false;
    while (i < path.size()) {
        std::size_t end = i;
        while (end < path.size() && !isSeparator(path[end]))
            ++end;
        const std::string part = path.substr(i, end - i);
        i = end;
        while (i < path.size() && isSeparator(path[i]))
            ++i;
        trailing = end < path.size() || part == "." || part == "..";
        if (part == ".")
            continue;
        if (part == "..") {
            if (!parts.empty() && parts.back() != "..")
                parts.pop_back();
            else if (!fromRoot)
                parts.push_back(part);
            continue;
        }
        parts.push_back(part);
    }
    std::string out = root;
    for (std::size_t k = 0; k < parts.size(); ++k)
        out += (k == 0 ? "" : "/") + parts[k];
    if (parts.empty())
        return out.empty() ? std::string(".") : out;
    if (trailing)
        out += '/';
    return out;
}

std::string shownPath(const std::string& path) {
    if (!isWindows())
        return path;
    std::string out;
    out.reserve(path.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        const bool separator = isSeparator(path[i]);
        // A run of separators is one ("C:\x\/y" from a folder joined to a name), but a network
        // path keeps the two it starts with.
        if (separator && i > 1 && isSeparator(path[i - 1]))
            continue;
        out += separator ? '\\' : path[i];
    }
    return out;
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
