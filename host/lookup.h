#pragma once

/// What the subcommands that look files up share: a watch over what a lookup asks, and how it is
/// shown.

#include <string>
#include <vector>

#include "answer.h"
#include "fio.h"
#include "option.h"

/// Text of gen as a text of the host's, and the other way round.
inline std::string host_text(STR const& text) {
    return {text.data(), text.size()};
}
inline STR gen_text(std::string const& text) {
    return {text.data(), text.size()};
}

/// Forgets the project, all libraries and the cache of lookups, as if nothing had been asked.
void forget_project();

/// One question whether a path exists, and the group of directories that it was asked for.
struct Asked {
    std::string group;
    std::string path;
    bool there;
};

/// Listens in its scope to what lookups ask of the file system. One at a time.
class LookupWatch {
  public:
    enum class Manner {
        listen,  ///< lookups run as they always do
        walk_on, ///< each hit is noted and denied: lookups walk past all that they could find
    };
    /// @param outside the group of questions that no search object asks
    LookupWatch(Manner manner, std::string outside);
    ~LookupWatch();
    LookupWatch(LookupWatch const&) = delete;
    LookupWatch& operator=(LookupWatch const&) = delete;

    /// The questions since the last call, in order.
    std::vector<Asked> take();

  private:
    static bool note(FIO_FIND const* asker, char const* path, bool exists);

    Manner m_manner;
    std::string m_outside;
    std::vector<Asked> m_asked;
    FIO_OBSERVER m_previous;
};

/// The two ways to see more of a lookup than its result, and how they show it.
class LookupView {
  public:
    /// Among which paths the first one shadows the others.
    enum class Rivals { all, same_extension };
    explicit LookupView(Rivals rivals = Rivals::all) : m_rivals(rivals) {}

    void declare(Options& options);

    LookupWatch::Manner manner() const;
    bool all() const { return m_all; }
    /// The questions that were answered with yes.
    static std::vector<Asked> hits(std::vector<Asked> const& asked);

    /// Shows people what was asked for @p name, as far as they want to see it. The name goes in
    /// front when it is one of several.
    void show(Answer& answer, std::string const& name, bool one_of_several,
              std::vector<Asked> const& asked) const;
    /// The same for scripts, as members of the record of that name.
    void tell(Value::Record& record, std::vector<Asked> const& asked) const;

  private:
    Rivals m_rivals;
    bool m_trace = false;
    bool m_all = false;
};
