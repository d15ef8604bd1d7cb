#include "fio_path.h"

#include "fio_directory.h"

#include <algorithm>
#include <memory>

namespace {

std::string_view without_leading_dot(std::string_view extension) {
    return extension.substr(extension.starts_with('.') ? 1 : 0);
}

void append_extension(STR& text, std::string_view extension) {
    std::string_view const bare = without_leading_dot(extension);
    if (!bare.empty()) {
        text += '.';
        text += bare;
    }
}

/// The directory components of a path while it is simplified: kept in place at the front of the
/// string that is read, so that simplifying needs no memory of its own.
class ComponentWriter {
  public:
    /// @p root is the length of the leading "/" or "//", which no ".." can remove.
    ComponentWriter(char* text, std::size_t root)
        : m_text(text), m_end(root), m_kept(root), m_absolute(root > 0) {}

    void enter(std::string_view component) {
        append(component);
        m_text[m_end++] = '/';
    }
    void leave() {
        if (m_end == m_kept) {
            if (!m_absolute) {
                enter("..");
                m_kept = m_end;
            }
            return;
        }
        --m_end;
        while (m_end > m_kept && m_text[m_end - 1] != '/')
            --m_end;
    }
    void append(std::string_view text) {
        std::char_traits<char>::move(m_text + m_end, text.data(), text.size());
        m_end += text.size();
    }
    std::size_t size() const { return m_end; }

  private:
    char* m_text;
    std::size_t m_end;
    std::size_t m_kept; ///< up to here nothing can be removed: the root, or ".." components
    bool m_absolute;
};

/// 1 for an absolute path, 2 for a network path, 0 for a relative one.
std::size_t root_length(std::string_view text) {
    std::size_t const slashes = std::min(text.find_first_not_of('/'), text.size());
    return slashes > 2 ? 1 : slashes;
}

} // namespace

FIO_PATH::FIO_PATH(char const* text) : m_text(text != nullptr ? text : "") {
    parse();
}

FIO_PATH::FIO_PATH(STR const& text) : m_text(text) {
    parse();
}

// The rendering is not copied: it is made anew whenever it is asked for.
// Each member can be assigned to itself.
FIO_PATH& FIO_PATH::operator=(FIO_PATH const& other) { // NOLINT(bugprone-unhandled-self-assignment)
    m_text = other.m_text;
    m_name = other.m_name;
    m_extension = other.m_extension;
    m_separator = other.m_separator;
    return *this;
}

FIO_PATH& FIO_PATH::operator=(FIO_PATH&& other) noexcept {
    FIO_PATH taken(std::move(other));
    swap(taken);
    return *this;
}

FIO_PATH& FIO_PATH::operator=(STR const& text) {
    m_text = text;
    parse();
    return *this;
}

FIO_PATH& FIO_PATH::operator=(char const* text) {
    // By way of a copy: the string may be what this very path was rendered to.
    return *this = STR(text != nullptr ? text : "");
}

FIO_PATH::operator char const*() const {
    if (m_separator == '/')
        return m_text.c_str();
    if (m_rendered == nullptr)
        m_rendered = std::construct_at(MEM_STL_ALLOCATOR<STR>().allocate(1));
    *m_rendered = m_text;
    std::replace(m_rendered->begin(), m_rendered->end(), '/', m_separator);
    return m_rendered->c_str();
}

void FIO_PATH::forget_rendering() {
    std::destroy_at(m_rendered);
    MEM_STL_ALLOCATOR<STR>().deallocate(m_rendered, 1);
    m_rendered = nullptr;
}

STR FIO_PATH::full_directory() const {
    return STR(text().substr(0, m_name));
}

STR FIO_PATH::filename() const {
    return STR(text().substr(m_name));
}

STR FIO_PATH::base() const {
    return STR(text().substr(m_name, m_extension - m_name));
}

STR FIO_PATH::extension() const {
    return STR(without_leading_dot(text().substr(m_extension)));
}

void FIO_PATH::directory(STR const& directory) {
    STR changed = directory;
    fio_end_with_slash(changed);
    std::size_t const base_length = m_extension - m_name;
    std::size_t const name = changed.size();
    changed.append(m_text, m_name, STR::npos);
    m_text.swap(changed);
    m_name = name;
    m_extension = name + base_length;
}

void FIO_PATH::filename(STR const& name) {
    m_text.replace(m_name, STR::npos, name);
    parse();
}

void FIO_PATH::base(STR const& name) {
    m_text.replace(m_name, m_extension - m_name, name);
    m_extension = m_name + name.size();
    // A name with directories in it moves the boundary between directory and file name.
    std::size_t const slash = name.rfind('/');
    if (slash != STR::npos)
        m_name += slash + 1;
}

void FIO_PATH::extension(STR const& ext, STR const& second) {
    m_text.erase(m_extension);
    append_extension(m_text, ext);
    std::size_t const end_of_first = m_text.size();
    append_extension(m_text, second);
    if (m_text.size() > end_of_first)
        m_extension = end_of_first;
    if (m_text.find('/', m_name) != STR::npos)
        parse();
}

void FIO_PATH::extension(FIO_EXTENSION_TYPE ext, FIO_EXTENSION_TYPE second) {
    extension(STR(fio_get_extension_string(ext)), STR(fio_get_extension_string(second)));
}

int FIO_PATH::levels() const {
    int count = absolute() ? 1 : 0;
    for (std::size_t i = 1; i < m_name; ++i)
        count += static_cast<int>(m_text[i] == '/' && m_text[i - 1] != '/');
    return count;
}

void FIO_PATH::cd(STR directory) {
    if (!directory.empty() && directory.front() == '/')
        m_text = std::move(directory);
    else
        m_text.replace(m_name, STR::npos, directory);
    fio_end_with_slash(m_text);
    m_name = m_extension = m_text.size();
}

void FIO_PATH::become_simplified() {
    if (m_text.empty())
        return;
    std::string_view const name = text().substr(m_name);
    bool const name_is_directory = name == "." || name == "..";
    std::size_t const base_length = name_is_directory ? 0 : m_extension - m_name;
    // A relative path can only grow where a last ".." gets its "/".
    if (name_is_directory)
        m_text += '/';
    std::size_t const directory_end = name_is_directory ? m_text.size() : m_name;

    std::size_t position = root_length(m_text);
    ComponentWriter written(m_text.data(), position);
    while (position < directory_end) {
        std::size_t const end = m_text.find('/', position);
        std::string_view const component = text().substr(position, end - position);
        if (component == "..")
            written.leave();
        else if (!component.empty() && component != ".")
            written.enter(component);
        position = end + 1;
    }
    m_name = written.size();
    written.append(text().substr(directory_end));
    m_text.resize(written.size());
    if (m_text.empty()) {
        m_text = "./";
        m_name = m_text.size();
    }
    m_extension = m_name + base_length;
}

void FIO_PATH::become_absolute(STR const& base) {
    if (!absolute()) {
        STR const front = fio_absolute_directory(base);
        if (!front.empty())
            directory(front + full_directory());
    }
    become_simplified();
}

void FIO_PATH::parse() {
    m_name = m_text.rfind('/') + 1; // npos + 1 is 0
    std::size_t const dot = m_text.rfind('.');
    bool const begins_extension = dot != STR::npos && dot > m_name && text().substr(m_name) != "..";
    m_extension = begins_extension ? dot : m_text.size();
}
