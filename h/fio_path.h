#pragma once

/// A path as a value: directory, base name and extension of one text.

#include <cstddef>

#include "fio_type.h"
#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// A path parsed into directory, base name and extension.
///
///     text            directory   base     extension
///     ""              ""          ""       ""
///     "top.v"         ""          "top"    "v"
///     "/p/src/top.v"  "/p/src/"   "top"    "v"
///     "/p/src/"       "/p/src/"   ""       ""
///     "/p/a.b/c"      "/p/a.b/"   "c"      ""
///     ".profile"      ""          ".profile" ""
///     "a.tar.gz"      ""          "a.tar"  "gz"
///     ".."            ""          ".."     ""
///
/// A null text gives the empty path, which stands for "not found" in every lookup. Nothing here
/// asks the file system, but become_absolute("") for the current directory.
class KORVANE_API FIO_PATH {
  public:
    FIO_PATH() = default;
    FIO_PATH(char const* text);
    FIO_PATH(STR const& text);
    FIO_PATH& operator=(STR const& text);

    /// The whole text, with "/" between its steps.
    STR fullpath() const { return m_text; }
    operator STR const() const { return m_text; }
    /// The whole text with the separator that path_separator chose; valid until the path is changed
    /// or rendered again.
    operator char const*() const;

    /// The directory part, ending in "/"; "" where there is none.
    STR full_directory() const;
    /// File name with extension; without it; the extension without its dot.
    STR filename() const;
    STR base() const;
    STR extension() const;

    /// Replaces the directory part; a missing "/" at its end is added, "" removes the part.
    void directory(STR const& directory);
    /// Replaces the whole file name; "" clears it.
    void filename(STR const& name);
    /// Replaces the base name and keeps the extension. The name is taken whole: a dot in it does
    /// not begin an extension.
    void base(STR const& name);
    /// Replaces the extension, with or without a leading dot; "" removes it. A second extension
    /// that is not empty follows the first one.
    void extension(STR const& ext, STR const& second);
    void extension(FIO_EXTENSION_TYPE ext, FIO_EXTENSION_TYPE second);

    /// Number of directories in the directory part, the root counted as one: "top.v" has 0, "a/b.v"
    /// and "/b.v" have 1, "/a/b.v" has 2.
    int levels() const;
    /// The text begins with "/" (with "//" for unc).
    bool absolute() const;
    bool unc() const;

    /// Makes the path all directory: @p directory itself when that is absolute, else the directory
    /// part followed by it. "" only drops the file name.
    void cd(STR directory);
    /// Removes "." and ".." steps and doubled separators by their text alone. A ".." that has no
    /// step to remove stays in a relative path and vanishes at the root; a path of which nothing
    /// remains becomes "./".
    void become_simplified();
    /// Puts @p base in front of a relative path and simplifies the result, which is absolute: a
    /// relative base is itself taken from the current directory, "" means that directory. The empty
    /// path becomes the base.
    void become_absolute(STR const& base);

    /// Sets the separator for rendering as `char const*`; '/' at first.
    void path_separator(char separator) { m_separator = separator; }

  private:
    void parse();

    STR m_text;
    std::size_t m_name = 0;      ///< where the file name begins
    std::size_t m_extension = 0; ///< where the extension's dot stands, or the text's length
    mutable STR m_rendered;      ///< filled only for a separator other than '/'
    char m_separator = '/';
};
