// What may be done from any number of threads, done from several at once: tracked allocation, the
// neutral character functions, and temporary files. Complains of whatever does not add up; under
// the thread sanitizer, that complains of the rest.

#include "gen_localization.h"
#include "gen_path_temp.h"
#include "mem_alloc_sys.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int threads = 4;
int complaints = 0;

void expect(bool is_kept, char const* rule) {
    if (is_kept)
        return;
    std::fprintf(stderr, "thread_probe: %s\n", rule);
    ++complaints;
}

template <typename Body>
void at_once(Body body) {
    std::vector<std::thread> running;
    for (int thread = 0; thread < threads; ++thread)
        running.emplace_back(body, thread);
    for (std::thread& thread : running)
        thread.join();
}

void count_bytes() {
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    std::vector<void*> kept(threads);
    at_once([&kept](int thread) {
        for (std::size_t round = 0; round < 20'000; ++round)
            MEM_LIST<STR> const churn(3, STR(round % 200, 'x'));
        MEM_TRACKER_THUNK tracker{1255};
        kept[static_cast<std::size_t>(thread)] = MEM_MANAGER::new_wrapper(100, &tracker, "TEST");
    });
    std::size_t usable = 0;
    for (void* const block : kept)
        usable += malloc_usable_size(block);
    expect(MEM_MANAGER::s_system_memory_counter.current() - before == usable, "bytes in use");
    // Given back by another thread than took them.
    at_once([&kept](int thread) {
        MEM_MANAGER::delete_wrapper(kept[static_cast<std::size_t>(threads - 1 - thread)], "TEST");
    });
    expect(MEM_MANAGER::s_system_memory_counter.current() == before, "bytes given back");
}

void ask_neutral_functions() {
    LOCALIZATION_BASE_STRING = "C.UTF-8"; // one that has to be made first
    std::atomic<int> wrong = 0;
    at_once([&wrong](int) {
        for (int round = 0; round < 5'000; ++round) {
            char text[] = "Text 42";
            gen_local_strlwr(text);
            wrong += std::string(text) != "text 42" || gen_local_isalpha('1') != 0 ||
                     gen_local_atof("0.5") != 0.5;
        }
    });
    expect(wrong == 0, "neutral functions");
}

void make_temporary_files() {
    std::string name = (std::filesystem::temp_directory_path() / "thread_probe_XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        return expect(false, "a directory");
    std::mutex mutex;
    std::set<std::string> made;
    at_once([&](int) {
        for (int round = 0; round < 50; ++round) {
            STR const path = gen_get_temp_filename(STR(name), "t", 42);
            std::lock_guard const lock(mutex);
            made.emplace(path);
        }
    });
    expect(made.size() == threads * 50, "every temporary file is somebody's own");
    std::filesystem::remove_all(name);
}

} // namespace

int main() {
    count_bytes();
    ask_neutral_functions();
    make_temporary_files();
    return complaints == 0 ? 0 : 1;
}
