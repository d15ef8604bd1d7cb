#include "verilog_includes.h"

#include "gen_path.h"
#include "input.h"
#include "lookup.h"

#include <algorithm>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

/// Where what begins at @p at ends: behind @p end, or with the source.
std::size_t behind(std::string_view source, std::string_view end, std::size_t at) {
    std::size_t const found = source.find(end, at);
    return found == std::string_view::npos ? source.size() : found + end.size();
}

std::string absolute(std::string const& path) {
    std::error_code fault;
    return fs::absolute(path, fault).lexically_normal();
}

/// Behind the string literal that begins at @p at. A quote behind a backslash does not end it; its
/// line does, which lets a stray quote in what a condition leaves out do no harm.
std::size_t behind_literal(std::string_view source, std::size_t at) {
    for (++at; at < source.size() && source[at] != '"' && source[at] != '\n'; ++at)
        if (source[at] == '\\')
            ++at;
    return std::min(at + 1, source.size());
}

/// Takes the name at the beginning of @p source, and gives its size, with its quotes; 0 for none.
std::size_t take_name(std::string_view source, std::vector<IncludedName>& names) {
    if (source.starts_with('`')) {
        std::size_t const size = std::min(source.find_first_of(" \t\r\n"), source.size());
        names.push_back({std::string(source.substr(0, size)), true});
        return size;
    }
    if (!source.starts_with('"') && !source.starts_with('<'))
        return 0;
    std::size_t const end = source.find_first_of(source.front() == '"' ? "\"\n" : ">\n", 1);
    if (end == source.npos || source[end] == '\n')
        return 0;
    names.push_back({std::string(source.substr(1, end - 1)), false});
    return end + 1;
}

} // namespace

std::vector<IncludedName> included_names(std::string_view source) {
    constexpr std::string_view directive = "`include";
    std::vector<IncludedName> names;
    for (std::size_t at = 0; at < source.size();) {
        std::string_view const rest = source.substr(at);
        if (rest.starts_with("//")) {
            at = behind(source, "\n", at);
        } else if (rest.starts_with("/*")) {
            at = behind(source, "*/", at + 2);
        } else if (rest.front() == '"') {
            at = behind_literal(source, at);
        } else if (rest.starts_with(directive)) {
            std::size_t const first =
                std::min(source.find_first_not_of(" \t", at + directive.size()), source.size());
            at = take_name(source.substr(first), names) + first;
        } else {
            ++at;
        }
    }
    return names;
}

void IncludeDirectories::follow(std::string const& source) {
    std::size_t next = m_files.size();
    meet(source);
    for (; next < m_files.size(); ++next) {
        // A copy: what is met is appended to them.
        std::string const file = m_files[next];
        std::string text;
        if (std::string fault = read_input(file, text); !fault.empty())
            m_faults.push_back(std::move(fault));
        for (auto const& [name, is_macro] : included_names(text))
            if (is_macro)
                m_faults.push_back("'" + file + "': '`include " + name + "' is not followed");
            else
                resolve(name, file);
    }
}

void IncludeDirectories::meet(std::string const& file) {
    if (m_met.insert(file).second)
        m_files.push_back(file);
}

void IncludeDirectories::resolve(std::string const& name, std::string const& from) {
    STR found;
    gen_find_include_file(name.c_str(), from.c_str(), nullptr, &found, nullptr);
    if (found.empty()) {
        m_faults.push_back("'" + from + "': '" + name + "' is not found");
        return;
    }
    std::string const path = absolute(host_text(found));
    meet(path);
    add_directory_of(name, from, path);
}

void IncludeDirectories::add_directory_of(std::string const& name, std::string const& from,
                                          std::string const& path) {
    std::error_code fault;
    if (fs::path(name).is_absolute())
        return;
    // A simulator takes the first directory that has the name.
    for (std::string const& directory : m_directories)
        if (fs::path const candidate = fs::path(directory) / name; fs::exists(candidate, fault)) {
            if (!fs::equivalent(candidate, path, fault))
                m_faults.push_back("'" + from + "': a simulator takes '" + candidate.string() +
                                   "' where the tools take '" + path + "'");
            return;
        }
    // Where the path does not end in the name, as when that begins with "..", the directory of the
    // source itself may still lead there.
    std::string const ending = "/" + name;
    std::string directory = fs::path(from).parent_path();
    if (path.ends_with(ending))
        directory = path.substr(0, path.size() - ending.size());
    if (!fs::equivalent(fs::path(directory) / name, path, fault))
        m_faults.push_back("'" + from + "': no directory leads a simulator from '" + name +
                           "' to '" + path + "'");
    m_directories.push_back(std::move(directory));
}
