// A path taken apart, changed and put together again against the same done with three strings, and
// what the project makes of it.

#include "fio_path.h"
#include "fuzz_input.h"
#include "gen_path_project.h"
#include "gen_path_text.h"
#include "plain_path.h"

#include <filesystem>

namespace {

STR gen_text(std::string const& text) {
    return STR(text.data(), text.size());
}

bool same(STR const& one, std::string const& other) {
    return std::string_view(one) == other;
}

void compare(FIO_PATH const& path, PlainPath const& plain) {
    require(same(path.fullpath(), plain.text()), "fullpath");
    require(same(path.full_directory(), plain.directory), "full_directory");
    require(same(path.filename(), plain.base + plain.extension), "filename");
    require(same(path.base(), plain.base), "base");
    require(same(path.extension(), plain.extension.substr(plain.extension.empty() ? 0 : 1)),
            "extension");
    require(path.levels() == plain.levels(), "levels");
    require(path.absolute() == plain.text().starts_with('/'), "absolute");
    require(path.unc() == plain.text().starts_with("//"), "unc");
}

/// Rendered with another separator, and back.
void compare_rendering(FIO_PATH& path, PlainPath const& plain, char separator) {
    std::string expected = plain.text();
    std::replace(expected.begin(), expected.end(), '/', separator);
    path.path_separator(separator);
    require(static_cast<char const*>(path) == std::string(expected.c_str()), "rendering");
    path.path_separator('/');
}

/// Any base for become_absolute, and what it stands for.
std::string absolute_base(std::string const& base) {
    static std::string const current = std::filesystem::current_path().string();
    return base.starts_with('/') ? base : PlainPath::with_slash(current) + base;
}

void change(FIO_PATH& path, PlainPath& plain, FuzzInput& input) {
    auto const change = input.take<std::uint8_t>();
    std::string const text = change % 16 < 11 ? input.take_text(40) : std::string();
    switch (change % 16) {
    case 0:
    case 1:
        path.directory(gen_text(text));
        plain.set_directory(text);
        break;
    case 2:
        path.filename(gen_text(text));
        plain.set_filename(text);
        break;
    case 3:
    case 4:
        path.base(gen_text(text));
        plain.set_base(text);
        break;
    case 5:
    case 6: {
        std::string const second = input.take_text(10);
        path.extension(gen_text(text), gen_text(second));
        plain.set_extension(text, second);
        break;
    }
    case 7:
    case 8:
        path.cd(gen_text(text));
        plain.cd(text);
        break;
    case 9:
        path.become_absolute(gen_text(text));
        plain.make_absolute(absolute_base(text));
        break;
    case 10:
        path = gen_text(text);
        plain.parse(text);
        break;
    case 11: {
        FIO_PATH const copy(path);
        path = "/somewhere/else.v";
        path = copy;
        break;
    }
    case 12: {
        FIO_PATH moved(std::move(path));
        path = std::move(moved);
        break;
    }
    case 13:
        compare_rendering(path, plain, input.take<char>());
        break;
    default:
        path.become_simplified();
        plain.simplify();
    }
}

/// An absolute path as seen from a project directory.
void compare_relative(std::string const& directory, std::string const& name) {
    std::string const path = "/" + name;
    std::string const project = PlainPath::with_slash("/" + directory);
    gen_set_project_dir_path(gen_text(project));
    std::string const expected = path.starts_with(project) ? path.substr(project.size()) : path;
    require(same(gen_get_relative_path_if_starts_with_project_dir(path.c_str()), expected),
            "relative to the project");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzInput input(data, size);
    std::string const text = input.take_text();
    FIO_PATH path(gen_text(text));
    PlainPath plain(text);
    compare(path, plain);
    for (int changes = 0; changes < 20 && !input.is_dry(); ++changes) {
        change(path, plain, input);
        compare(path, plain);
    }
    // The project's functions take strings that end at a NUL.
    compare_relative(std::string(text.c_str()).substr(0, text.size() / 2), plain.text().c_str());
    return 0;
}
