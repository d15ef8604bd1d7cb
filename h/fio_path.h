#pragma once

/// A path as a value: directory, base name and extension of one string.

#include "fio_type.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <cstddef>
#include <string_view>
#include <utility>

/// A path parsed into directory, base name and extension.
///
///     string          directory   base        extension
///     ""              ""          ""          ""
///     "top.v"         ""          "top"       "v"
///     "/p/src/top.v"  "/p/src/"   "top"       "v"
///     "/p/src/"       "/p/src/"   ""          ""
///     "/p/a.b/c"      "/p/a.b/"   "c"         ""
///     ".profile"      ""          ".profile"  ""
///     "a.tar.gz"      ""          "a.tar"     "gz"
///     "tool."         ""          "tool"      ""      (the string keeps its ".")
///     ".."            ""          ".."        ""
///
/// A null string gives the empty path, which stands for "not found" in every lookup. A path that
/// was moved from is the empty path. Nothing here asks the file system, but become_absolute for the
/// current directory.
class KORVANE_API FIO_PATH {
  public:
    /// The empty path.
    FIO_PATH() = default;
    /// The path of a string, or a copy.
    FIO_PATH(char const* text);
    FIO_PATH(STR const& text);
    FIO_PATH(FIO_PATH const& other)
        : m_text(other.m_text), m_name(other.m_name), m_extension(other.m_extension),
          m_separator(other.m_separator) {}
    /// Leaves @p other empty.
    FIO_PATH(FIO_PATH&& other) noexcept { swap(other); }
    ~FIO_PATH() {
        if (m_rendered != nullptr) [[unlikely]]
            forget_rendering();
    }

    /// Like the constructors; a path may be assigned to itself. A string leaves the separator that
    /// path_separator chose.
    FIO_PATH& operator=(FIO_PATH const& other);
    FIO_PATH& operator=(FIO_PATH&& other) noexcept;
    FIO_PATH& operator=(STR const& text);
    FIO_PATH& operator=(char const* text);

    /// True for the empty path, without copying the string.
    bool empty() const { return m_text.empty(); }
    /// The whole string, with "/" between its components.
    STR fullpath() const { return m_text; }
    operator STR const() const { return m_text; }
    /// The whole string with the separator that path_separator chose; valid until the path is
    /// changed or rendered again.
    operator char const*() const;

    /// The directory part, ending in "/"; "" where there is none.
    STR full_directory() const;
    /// File name with extension; without it; the extension without its dot.
    STR filename() const;
    STR base() const;
    STR extension() const;

    /// Replaces the directory part; a missing "/" at its end is added, "" removes the part.
    void directory(STR const& directory);
    /// Replaces the whole file name and parses the new one; "" clears it.
    void filename(STR const& name);
    /// Replaces the base name and keeps the extension. The name is taken whole: a dot in it does
    /// not begin an extension.
    void base(STR const& name);
    /// Replaces the extension, with or without a leading dot; "" removes it. A second extension
    /// that is not empty follows the first one, and is the path's extension then.
    void extension(STR const& ext, STR const& second);
    /// The same with extensions by number; FIO_EXTENSION_NONE stands for "".
    void extension(FIO_EXTENSION_TYPE ext, FIO_EXTENSION_TYPE second);

    /// Number of directories in the directory part, the root counted as one: "top.v" has 0, "a/b.v"
    /// and "/b.v" have 1, "/a/b.v" and "/a//b.v" have 2.
    int levels() const;
    /// The string begins with "/" (with "//" for unc).
    bool absolute() const { return !m_text.empty() && m_text[0] == '/'; }
    bool unc() const { return absolute() && m_text.size() > 1 && m_text[1] == '/'; }

    /// Makes the path all directory: @p directory itself when that is absolute, else the directory
    /// part followed by it. "" only drops the file name.
    void cd(STR directory);
    /// Removes "." and ".." components and doubled separators by the string alone.
    ///
    ///     "a/./b//c.v"   => "a/b/c.v"
    ///     "a/b/../c.v"   => "a/c.v"
    ///     "a/b/.."       => "a/"         a last "." or ".." names a directory
    ///     "../../a"      => "../../a"    nothing before it to remove
    ///     "/../a"        => "/a"         the root is its own parent
    ///     "a/.."         => "./"         nothing remained
    ///     "//host/./a"   => "//host/a"   a network path stays one; "///a" is none
    ///     ""             => ""
    void become_simplified();
    /// Puts @p base in front of a relative path and simplifies the result, which is absolute: a
    /// relative base is itself taken from the current directory, "" means that directory. The empty
    /// path becomes the base, as a directory. An absolute path is only simplified. Where the
    /// current directory is needed and has no path, this one is left relative.
    void become_absolute(STR const& base);

    /// Sets the separator for rendering as `char const*`; '/' at first.
    void path_separator(char separator) { m_separator = separator; }

  private:
    friend class FIO_FILE_SYSTEM;
    friend class FIO_FIND;

    void parse();
    void forget_rendering();
    std::string_view text() const { return m_text; }
    void swap(FIO_PATH& other) noexcept {
        m_text.swap(other.m_text);
        std::swap(m_name, other.m_name);
        std::swap(m_extension, other.m_extension);
        std::swap(m_separator, other.m_separator);
    }

    STR m_text;
    std::size_t m_name = 0;      ///< where the file name begins
    std::size_t m_extension = 0; ///< where the extension's dot stands, or the string's length
    /// The string with a separator other than '/', made when it is asked for. Hardly any path needs
    /// one, and lists and caches keep many paths.
    mutable STR* m_rendered = nullptr;
    char m_separator = '/';
};
