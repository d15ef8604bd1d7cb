#include "simulator_list.h"

#include "verilog_includes.h"

void SimulatorList::add(std::string const& option, std::string const& path) {
    bool const is_include_directory = option == "+incdir+";
    if (is_include_directory && !m_known_directories.insert(path).second)
        return;
    if (is_include_directory)
        m_include_directories.push_back(path);
    else if (option != "-y ")
        m_files.push_back(path);
    if (path.find_first_of(" \t\n") != path.npos)
        m_faults.push_back("simulators cannot read a name with blanks: '" + path + "'");
    else if (is_include_directory && path.find('+') != path.npos)
        m_faults.push_back("simulators take a \"+\" for the end of a directory: '" + path + "'");
    m_lines.push_back(option + path);
}

void SimulatorList::add_includes(std::vector<std::string> const& unit_directories) {
    IncludeDirectories includes(m_include_directories);
    for (std::string const& file : m_files)
        includes.follow(file);
    m_faults.insert(m_faults.end(), includes.faults().begin(), includes.faults().end());
    for (std::string const& directory : includes.added())
        add("+incdir+", directory);
    for (std::string const& directory : unit_directories) // behind those of the files themselves
        add("+incdir+", directory);
}
