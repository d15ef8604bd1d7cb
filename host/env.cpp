#include "command.h"
#include "gen_os_info_paths.h"

#include <cstdlib>
#include <optional>

namespace {

Value variable(char const* name) {
    char const* const value = std::getenv(name);
    return value != nullptr ? Value(value) : Value();
}

Value::Record search_paths() {
    return {{"path", variable("PATH")}, {"ld_library_path", variable("LD_LIBRARY_PATH")}};
}

/// An environment variable that has another value in the scope of a request, if one is given.
class AskedVariable {
  public:
    AskedVariable(char const* name, std::optional<std::string> const& value) : m_name(name) {
        if (char const* const before = std::getenv(name))
            m_before = before;
        if (value)
            setenv(name, value->c_str(), 1);
    }
    ~AskedVariable() {
        if (m_before)
            setenv(m_name, m_before->c_str(), 1);
        else
            unsetenv(m_name);
    }
    AskedVariable(AskedVariable const&) = delete;
    AskedVariable& operator=(AskedVariable const&) = delete;

  private:
    char const* m_name;
    std::optional<std::string> m_before;
};

/// Changes the search paths, shows them and restores them, as a tool does that starts another one.
class Env : public Command {
  public:
    void declare(Options& options) override {
        options.argument("tool", &m_tool, "The file name of the tool to be started").required();
        options.value("--platform", &m_platform, "Ask as if KORVANE_PLATFORM were this");
        options.value("--bit-type", &m_bit_type, "Ask as if KORVANE_BIT_TYPE were this");
    }

    Status run(Answer& answer) override {
        AskedVariable const platform("KORVANE_PLATFORM", m_platform);
        AskedVariable const bit_type("KORVANE_BIT_TYPE", m_bit_type);
        bool const had_library_path = std::getenv("LD_LIBRARY_PATH") != nullptr;
        // gen keeps its first answer: a later request to the same process cannot change it.
        answer.field("64_bit_wanted", gen_is_system_64bit());
        STR old_path;
        STR old_library_path;
        bool const changed = gen_set_paths_for_64bit(m_tool.c_str(), old_path, old_library_path);
        answer.field("changed", changed);
        answer.field("for_the_tool", search_paths());
        if (changed)
            gen_restore_paths(old_path, old_library_path);
        answer.field("restored", search_paths());
        if (changed && !had_library_path)
            answer.remark("LD_LIBRARY_PATH was not set, and is empty once restored");
        if (!changed)
            answer.remark(std::getenv("KORVANE_PLATFORM") == nullptr
                              ? "KORVANE_PLATFORM is not set"
                              : "the platform's 64-bit directory does not contain '" + m_tool +
                                    "'");
        return status_of(changed);
    }

  private:
    std::string m_tool;
    std::optional<std::string> m_platform;
    std::optional<std::string> m_bit_type;
};

} // namespace

void add_env(Commands& commands) {
    commands.add<Env>({
        .name = "env",
        .summary = "Shows what the search paths become for a tool that has a 64-bit twin",
        .example = "  $ gen_query env fitter --platform linux\n"
                   "  64 bit wanted  no\n"
                   "  changed        yes\n"
                   "  for the tool\n"
                   "    path             /opt/korvane//linux64/:/opt/korvane/linux:/usr/bin:/bin\n"
                   "    ld library path  /opt/korvane//linux64/:\n"
                   "  restored\n"
                   "    path             /opt/korvane/linux:/usr/bin:/bin\n"
                   "  ...\n"
                   "The exit status is 1 where the paths stay as they are.",
    });
}
