#pragma once

/// A list of files as Verilator takes it after -f, and Icarus Verilog after -c.

#include <set>
#include <string>
#include <vector>

/// What simulators cannot read is listed all the same, and is a fault.
class SimulatorList {
  public:
    /// A line of a source (""), a library file ("-v "), or a directory of units ("-y ") or of
    /// includes ("+incdir+"). The last are listed once.
    void add(std::string const& option, std::string const& path);
    void add_option(std::string text) { m_lines.push_back(std::move(text)); }

    /// Adds the directories by which a simulator finds what the files of the list include, and what
    /// units include that it takes from @p unit_directories.
    void add_includes(std::vector<std::string> const& unit_directories);

    std::vector<std::string> const& lines() const { return m_lines; }
    /// What is missing, and what simulators cannot read.
    std::vector<std::string> const& faults() const { return m_faults; }

  private:
    std::vector<std::string> m_lines;
    std::vector<std::string> m_files; ///< sources and library files, whose includes are followed
    std::vector<std::string> m_include_directories;
    std::set<std::string> m_known_directories; ///< the same
    std::vector<std::string> m_faults;
};
