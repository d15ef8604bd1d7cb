#pragma once

/// The files that Verilog sources include, as the suite's tools find them.

#include <set>
#include <string>
#include <string_view>
#include <vector>

/// What an include directive names.
struct IncludedName {
    std::string text;
    bool is_macro; ///< its text is "`NAME", of which only a simulator knows the file
};

/// The include directives of a source, those in comments and texts left out.
std::vector<IncludedName> included_names(std::string_view source);

/// Follows includes, and collects the directories by which a simulator finds the same files.
class IncludeDirectories {
  public:
    /// @param known directories that the simulator is given anyway, in their order
    explicit IncludeDirectories(std::vector<std::string> known = {})
        : m_known(known.size()), m_directories(std::move(known)) {}

    /// Follows what @p source includes, and what that includes.
    void follow(std::string const& source);

    /// The directories that have to be added.
    std::vector<std::string> added() const {
        return {m_directories.begin() + static_cast<std::ptrdiff_t>(m_known), m_directories.end()};
    }
    /// What cannot be found, or would be found elsewhere.
    std::vector<std::string> const& faults() const { return m_faults; }

  private:
    void meet(std::string const& file);
    void resolve(std::string const& name, std::string const& from);
    void add_directory_of(std::string const& name, std::string const& from,
                          std::string const& path);

    std::size_t m_known; ///< so many directories come first, and are not added
    std::vector<std::string> m_directories;
    std::vector<std::string> m_files; ///< all that were met, sources and what they include
    std::set<std::string> m_met;      ///< the same
    std::vector<std::string> m_faults;
};
