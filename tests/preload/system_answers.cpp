// Preloaded in front of the C library, answers in its place what the environment says. Each
// variable replaces one function's answer; without it the real one is asked.
//
//     FAKED_TIME       time(): seconds since 1970, one a call, parted by ","; the last one stays
//                      from then on
//     FAKED_TICKS      times(): the clock-tick count, likewise
//     FAKED_CPU        getrusage(): "user/system" in microseconds, likewise
//     FAKED_HOST_NAME  gethostname(): the name, without an end when it fills the buffer; "" fails
//     FAKED_ADDRESSES  gethostbyname(): addresses in hexadecimal, separated by ","
//     FAKED_UNAME      uname(): fails
//     FAKED_PUTENV     putenv(): fails for want of memory
//     FAKED_CONFIGURED, FAKED_TICKS_PER_SECOND, FAKED_PAGES
//                      sysconf(): the configured processors, the clock ticks a second, the pages of
//                      memory; "-1" fails

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dlfcn.h>
#include <netdb.h>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/times.h>
#include <sys/utsname.h>
#include <unistd.h>
#include <vector>

namespace {

// With 64-bit time the C library has other functions under other names.
#if defined(__i386__)
constexpr char time_name[] = "__time64";
constexpr char getrusage_name[] = "__getrusage64";
#else
constexpr char time_name[] = "time";
constexpr char getrusage_name[] = "getrusage";
#endif

template <typename Function>
Function* real(char const* name, Function* /*of this type*/) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

timeval microseconds(long long count) {
    timeval time{};
    time.tv_sec = static_cast<decltype(time.tv_sec)>(count / 1000000);
    time.tv_usec = static_cast<decltype(time.tv_usec)>(count % 1000000);
    return time;
}

std::vector<std::string> parts(char const* list) {
    std::vector<std::string> found(1);
    for (char const* next = list; *next != '\0'; ++next)
        if (*next == ',')
            found.emplace_back();
        else
            found.back() += *next;
    return found;
}

/// The next of the readings in @p list.
std::string next_reading(char const* list, std::size_t& calls) {
    std::vector<std::string> const readings = parts(list);
    return readings[calls < readings.size() ? calls++ : calls - 1];
}

/// The variable that gives a value of sysconf(); null where only the system does.
char const* faked_setting(int name) {
    switch (name) {
    case _SC_NPROCESSORS_CONF:
        return std::getenv("FAKED_CONFIGURED");
    case _SC_CLK_TCK:
        return std::getenv("FAKED_TICKS_PER_SECOND");
    case _SC_PHYS_PAGES:
        return std::getenv("FAKED_PAGES");
    default:
        return nullptr;
    }
}

/// The entry of a host of no name with the addresses of @p list, built anew on each call.
hostent* host_entry(char const* list) {
    static std::vector<std::string> bytes;
    static std::vector<char*> addresses;
    static hostent entry;

    bytes.clear();
    addresses.clear();
    for (std::string const& digits : parts(list)) {
        bytes.emplace_back();
        for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
            bytes.back() += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    for (std::string& address : bytes)
        addresses.push_back(address.data());
    addresses.push_back(nullptr);
    entry.h_length = static_cast<int>(bytes.front().size());
    entry.h_addrtype = entry.h_length == 4 ? AF_INET : AF_INET6;
    entry.h_addr_list = addresses.data();
    return &entry;
}

} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED std::time_t time(std::time_t* out) noexcept {
    static std::size_t calls = 0;
    char const* const faked = std::getenv("FAKED_TIME");
    std::time_t const now =
        faked != nullptr ? std::stoll(next_reading(faked, calls)) : real(time_name, &time)(nullptr);
    if (out != nullptr)
        *out = now;
    return now;
}

EXPORTED std::clock_t times(tms* out) noexcept {
    static std::size_t calls = 0;
    if (char const* const faked = std::getenv("FAKED_TICKS"))
        return static_cast<std::clock_t>(std::stoll(next_reading(faked, calls)));
    return real("times", &times)(out);
}

EXPORTED int getrusage(__rusage_who_t who, rusage* out) noexcept {
    static std::size_t calls = 0;
    char const* const faked = std::getenv("FAKED_CPU");
    if (faked == nullptr)
        return real(getrusage_name, &getrusage)(who, out);
    std::string const reading = next_reading(faked, calls);
    *out = {};
    out->ru_utime = microseconds(std::stoll(reading));
    out->ru_stime = microseconds(std::stoll(reading.substr(reading.find('/') + 1)));
    return 0;
}

EXPORTED int gethostname(char* name, std::size_t size) noexcept {
    char const* const faked = std::getenv("FAKED_HOST_NAME");
    if (faked == nullptr)
        return real("gethostname", &gethostname)(name, size);
    if (*faked == '\0') {
        errno = EPERM;
        return -1;
    }
    std::strncpy(name, faked, size);
    return 0;
}

EXPORTED hostent* gethostbyname(char const* name) {
    if (char const* const faked = std::getenv("FAKED_ADDRESSES"))
        return host_entry(faked);
    return real("gethostbyname", &gethostbyname)(name);
}

EXPORTED int uname(utsname* out) noexcept {
    if (std::getenv("FAKED_UNAME") == nullptr)
        return real("uname", &uname)(out);
    errno = EFAULT;
    return -1;
}

EXPORTED int putenv(char* text) noexcept {
    if (std::getenv("FAKED_PUTENV") == nullptr)
        return real("putenv", &putenv)(text);
    errno = ENOMEM;
    return -1;
}

EXPORTED long sysconf(int name) noexcept {
    if (char const* const faked = faked_setting(name))
        return std::strtol(faked, nullptr, 10);
    return real("sysconf", &sysconf)(name);
}
