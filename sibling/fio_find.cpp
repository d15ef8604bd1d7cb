#include "fio_find.h"

#include "fio_directory.h"
#include "fio_path_list.h"
#include "fio_question.h"
#include "fio_wildcard.h"

#include <algorithm>

namespace {

/// A name that can be looked for in a directory.
bool is_relative_name(std::string_view name) {
    return !name.empty() && name.front() != '/';
}

bool is_absolute(std::string_view text) {
    return text.starts_with('/');
}

} // namespace

FIO_FIND::FIO_FIND(STR path_list) {
    init(path_list);
}

FIO_FIND::FIO_FIND(MEM_LIST<FIO_PATH> const& directories) {
    for (FIO_PATH const& directory : directories)
        if (!directory.text().empty())
            m_directories.push_back(directory);
    make_prefixes();
}

FIO_FIND::~FIO_FIND() = default;

void* FIO_FIND::operator new(std::size_t size) {
    return MEM_STL_ALLOCATOR<unsigned char>().allocate(size);
}

void FIO_FIND::operator delete(void* object) {
    MEM_STL_ALLOCATOR<unsigned char>().deallocate(static_cast<unsigned char*>(object), 0);
}

void FIO_FIND::init(STR const& path_list) {
    m_text = path_list;
    m_directories.clear();
    for (std::string_view const entry : fio_split_path_list(m_text))
        m_directories.emplace_back(STR(entry));
    m_names.clear();
    m_next_name = 0;
    make_prefixes();
}

void FIO_FIND::make_prefixes() {
    m_prefixes.clear();
    m_prefixes.reserve(m_directories.size());
    m_longest_prefix = 0;
    m_has_relative_entries = false;
    for (FIO_PATH const& directory : m_directories) {
        bool const absolute = directory.absolute();
        STR& prefix = m_prefixes.emplace_back(absolute ? STR() : m_base_prefix);
        prefix += directory.text();
        fio_end_with_slash(prefix);
        m_longest_prefix = std::max(m_longest_prefix, prefix.size());
        m_has_relative_entries |= !absolute;
    }
}

void FIO_FIND::set_directory_for_results_to_become_absolute_to(char const* directory) {
    std::string_view const base = directory != nullptr ? directory : "";
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

void FIO_FIND::reserve_question(std::size_t name_length) {
    m_question.clear();
    m_question.reserve(m_longest_prefix + name_length);
}

bool FIO_FIND::ask() const {
    // The system would read no further than an embedded NUL and answer for another name.
    return m_question.find('\0') == STR::npos && fio_path_exists(this, m_question.c_str());
}

FIO_PATH FIO_FIND::find_first_relative_path(FIO_PATH const& relative_path) {
    std::string_view const name = relative_path.text();
    if (!is_relative_name(name))
        return {};
    reserve_question(name.size());
    for (STR const& prefix : m_prefixes) {
        m_question.assign(prefix).append(name);
        if (ask())
            return m_question;
    }
    return {};
}

/// Asks for the base name with each extension under one directory; true when one was there.
bool FIO_FIND::append_found(std::string_view prefix, STR const& base_name,
                            MEM_VECTOR<STR> const& extensions, MEM_LIST<FIO_PATH>& results) {
    bool found = false;
    m_question.assign(prefix).append(base_name);
    std::size_t const stem = m_question.size();
    for (STR const& extension : extensions) {
        m_question.resize(stem);
        if (!extension.empty() && extension.front() != '.')
            m_question += '.';
        m_question += extension;
        if (ask()) {
            results.emplace_back(m_question);
            found = true;
        }
    }
    return found;
}

void FIO_FIND::find_all(STR const& base_name, MEM_VECTOR<STR> const& extensions,
                        MEM_LIST<FIO_PATH>* results, bool all_directories, bool absolute) {
    if (results == nullptr || !is_relative_name(base_name))
        return;
    std::size_t longest_extension = 0;
    for (STR const& extension : extensions)
        longest_extension = std::max(longest_extension, extension.size());
    reserve_question(base_name.size() + 1 + longest_extension);
    for (STR const& prefix : m_prefixes) {
        bool const found =
            append_found(absolute && !is_absolute(prefix) ? fio_absolute_directory(prefix) : prefix,
                         base_name, extensions, *results);
        if (found && !all_directories)
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
