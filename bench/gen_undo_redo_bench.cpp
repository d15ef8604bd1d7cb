#include "gen_undo_redo.h"

#include "contest.h"

#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <list>
#include <memory>
#include <unistd.h>

namespace {

constexpr int entries = 1'000'000;

/// A directory of this run alone.
class Place {
  public:
    Place() { std::filesystem::create_directory(m_path); }
    ~Place() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    Place(Place const&) = delete;
    Place& operator=(Place const&) = delete;

    std::string const& path() const { return m_path; }

  private:
    std::string m_path = std::filesystem::temp_directory_path().string() + "/gen_bench_undo_" +
                         std::to_string(getpid());
};

template <typename Text>
Text command(int i) {
    return Text("set_location -to node[") + std::to_string(i).c_str() + "] X12_Y" +
           std::to_string(i % 100).c_str();
}

int collect_and_write(std::string const& directory) {
    GEN_UNDO_REDO_MGR manager;
    manager.start_new_file(STR(directory));
    manager.begin_section("Move nodes");
    STR const none;
    for (int i = 0; i < entries; ++i)
        manager.add_undo_command(command<STR>(i), none);
    manager.end_section();
    manager.commit_file();
    return 0;
}

/// The same strings through the same containers, with the printf-like layer and the stream that a
/// tool would take: a section kept twice, as the manager has to.
int collect_and_write_with_fmt(std::string const& directory) {
    std::list<std::string> current;
    for (int i = 0; i < entries; ++i)
        current.push_back(fmt::format("\t{:6}.\t{}", i + 1, command<std::string>(i)));
    std::list<std::string> const section = current;
    std::ofstream file(directory + "/fmt.txt");
    file << "Move nodes\n\n\tUndo Commands\n";
    for (std::string const& entry : section)
        file << entry << '\n';
    file << "\n\n";
    current = section;
    return 0;
}

void enter_all() {
    auto const place = std::make_shared<Place>();
    enter(
        "GEN_UNDO_REDO_MGR, 1e6 undo entries", "gen",
        [place](std::size_t) { return collect_and_write(place->path()); }, entries);
    enter(
        "GEN_UNDO_REDO_MGR, 1e6 undo entries", "fmt and ofstream",
        [place](std::size_t) { return collect_and_write_with_fmt(place->path()); }, entries);
}

Family const undo{enter_all};

} // namespace
