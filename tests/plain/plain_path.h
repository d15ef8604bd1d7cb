#pragma once

/// Paths as three strings, put together anew for every answer, and simplified by a list of their
/// components: what FIO_PATH is compared with.

#include <algorithm>
#include <string>
#include <vector>

/// What a path becomes without the components that can go.
inline std::string plainly_simplified(std::string const& text) {
    if (text.empty())
        return "";
    std::vector<std::string> components(1);
    for (char const c : text) {
        if (c == '/')
            components.emplace_back();
        else
            components.back() += c;
    }
    std::size_t const slashes = std::min(text.find_first_not_of('/'), text.size());
    std::string const root = slashes == 0 ? "" : slashes == 2 ? "//" : "/";
    std::vector<std::string> kept;
    for (std::string const& component : components) {
        if (component.empty() || component == ".")
            continue;
        if (component != "..")
            kept.push_back(component);
        else if (!kept.empty() && kept.back() != "..")
            kept.pop_back();
        else if (root.empty())
            kept.push_back(component);
    }
    std::string const& last = components.back();
    bool const directory = last.empty() || last == "." || last == "..";
    std::string result = root;
    for (std::size_t i = 0; i < kept.size(); ++i)
        result += kept[i] + (directory || i + 1 < kept.size() ? "/" : "");
    return result.empty() ? "./" : result;
}

struct PlainPath {
    std::string directory; ///< ends in "/", or is empty
    std::string base;
    std::string extension; ///< with its dot

    PlainPath() = default;
    explicit PlainPath(std::string const& text) { parse(text); }

    std::string text() const { return directory + base + extension; }

    void parse(std::string const& text) {
        std::string const name = text.substr(text.rfind('/') + 1); // npos + 1 is 0
        directory = text.substr(0, text.size() - name.size());
        std::size_t const dot = name.rfind('.');
        bool const has_extension = name != ".." && dot != std::string::npos && dot != 0;
        base = has_extension ? name.substr(0, dot) : name;
        extension = has_extension ? name.substr(dot) : "";
    }

    void set_directory(std::string const& text) { directory = with_slash(text); }
    void set_filename(std::string const& name) { parse(directory + name); }
    void set_base(std::string const& name) {
        std::size_t const name_start = name.rfind('/') + 1;
        directory += name.substr(0, name_start);
        base = name.substr(name_start);
    }
    void set_extension(std::string const& first, std::string const& second) {
        std::string const front = with_dot(first);
        std::string const back = with_dot(second);
        if ((front + back).find('/') != std::string::npos) {
            parse(directory + base + front + back);
            return;
        }
        base += back.empty() ? "" : front;
        extension = back.empty() ? front : back;
    }
    void cd(std::string const& text) {
        directory = with_slash(text.starts_with('/') ? text : directory + text);
        base.clear();
        extension.clear();
    }
    void simplify() {
        std::string const name = base + extension;
        std::string const whole = plainly_simplified(text());
        if (name == "." || name == "..") {
            directory = whole;
            base.clear();
            extension.clear();
        } else {
            directory = whole.substr(0, whole.size() - name.size());
        }
    }
    /// @p front is absolute.
    void make_absolute(std::string const& front) {
        if (!directory.starts_with('/'))
            directory = with_slash(front) + directory;
        simplify();
    }

    int levels() const {
        int count = directory.starts_with('/') ? 1 : 0;
        for (std::size_t i = 1; i < directory.size(); ++i)
            count += directory[i] == '/' && directory[i - 1] != '/' ? 1 : 0;
        return count;
    }

    static std::string with_slash(std::string const& text) {
        return text.empty() || text.ends_with('/') ? text : text + '/';
    }
    static std::string with_dot(std::string const& text) {
        std::string const bare = text.starts_with('.') ? text.substr(1) : text;
        return bare.empty() ? "" : '.' + bare;
    }
};
