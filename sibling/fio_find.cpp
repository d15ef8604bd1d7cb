#include "fio_find.h"

#include "fio_directory.h"
#include "fio_existence.h"
#include "fio_path_list.h"
#include "fio_wildcard.h"

#include <algorithm>
#include <iterator>

namespace {

/// A name that can be looked for in a directory.
bool is_relative_name(std::string_view name) {
    return !name.empty() && name.front() != '/' && fio_is_system_name(name);
}

bool is_absolute(std::string_view text) {
    return text.starts_with('/');
}

/// What relative ones of these directories start at: the current directory, ending in "/". It is
/// not asked for when there are none.
STR directory_for(MEM_VECTOR<STR> const& directories) {
    bool const all_absolute = std::all_of(directories.begin(), directories.end(), is_absolute);
    return all_absolute ? STR() : fio_absolute_directory("");
}

/// The extensions that a file name can end with.
MEM_VECTOR<std::string_view> endings_of(MEM_VECTOR<STR> const& extensions) {
    MEM_VECTOR<std::string_view> endings;
    endings.reserve(extensions.size());
    std::copy_if(extensions.begin(), extensions.end(), std::back_inserter(endings),
                 fio_is_system_name);
    return endings;
}

} // namespace

FIO_FIND::FIO_FIND(STR path_list) {
    init(path_list);
}

FIO_FIND::FIO_FIND(MEM_LIST<FIO_PATH> const& directories) {
    for (FIO_PATH const& directory : directories)
        if (!directory.empty())
            m_directories.push_back(directory);
    make_prefixes();
}

FIO_FIND::~FIO_FIND() = default;

void FIO_FIND::begin(STR const& text) {
    m_text = text;
    m_directories.clear();
    m_names.clear();
    m_next_name = 0;
}

void FIO_FIND::init(STR const& path_list) {
    begin(path_list);
    for (std::string_view const entry : fio_split_path_list(m_text))
        m_directories.emplace_back(STR(entry));
    make_prefixes();
}

void FIO_FIND::make_prefixes() {
    m_prefixes.clear();
    m_prefixes.reserve(m_directories.size());
    m_has_relative_entries = false;
    for (FIO_PATH const& directory : m_directories) {
        if (!fio_is_system_name(directory.text()))
            continue;
        bool const absolute = directory.absolute();
        STR& prefix = m_prefixes.emplace_back(absolute ? STR() : m_base_prefix);
        prefix += directory.text();
        fio_end_with_slash(prefix);
        m_has_relative_entries |= !absolute;
    }
}

void FIO_FIND::set_directory_for_results_to_become_absolute_to(char const* directory) {
    std::string_view const base = directory != nullptr ? directory : "";
    // A relative one has to be looked at again: the current directory may be another by now.
    if (base == m_base && (base.empty() || is_absolute(base)))
        return;
    m_base = base;
    STR prefix = base.empty() ? STR() : fio_absolute_directory(base);
    if (prefix == m_base_prefix)
        return;
    m_base_prefix.swap(prefix);
    if (m_has_relative_entries)
        make_prefixes();
}

FIO_PATH FIO_FIND::find_first_relative_path(FIO_PATH const& relative_path) {
    std::string_view const name = relative_path.text();
    if (!is_relative_name(name))
        return {};
    for (STR const& prefix : m_prefixes) {
        m_candidate.assign(prefix).append(name);
        if (fio_path_exists(this, m_candidate.c_str()))
            return m_candidate;
    }
    return {};
}

void FIO_FIND::find_all(STR const& base_name, MEM_VECTOR<STR> const& extensions,
                        MEM_LIST<FIO_PATH>* results, bool all_directories, bool absolute) {
    if (results == nullptr || !is_relative_name(base_name))
        return;
    STR const current = absolute ? directory_for(m_prefixes) : STR();
    MEM_VECTOR<std::string_view> const endings = endings_of(extensions);
    for (STR const& prefix : m_prefixes) {
        m_candidate.assign(is_absolute(prefix) ? STR() : current).append(prefix).append(base_name);
        std::size_t const stem_length = m_candidate.size();
        std::size_t const found_before = results->size();
        for (std::string_view const ending : endings) {
            m_candidate.resize(stem_length);
            if (!ending.starts_with('.') && !ending.empty())
                m_candidate += '.';
            m_candidate += ending;
            if (fio_file_exists(this, m_candidate.c_str()))
                results->emplace_back(m_candidate);
        }
        if (!all_directories && results->size() > found_before)
            return;
    }
}

STR FIO_FIND::find_first() {
    m_names = fio_matching_names(m_text);
    m_next_name = 0;
    return find_next();
}

STR FIO_FIND::find_next() {
    return m_next_name < m_names.size() ? m_names[m_next_name++] : STR();
}
