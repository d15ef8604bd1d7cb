// A self-test for hosts to run on a manager, and part of the interface. The tests of this library
// are in tests/.

#include "gen_dyn_flag.h"
#include "gen_report.h"
#include "gen_string_message.h"
#include "gen_text_file.h"

namespace {

/// What the self-test writes.
class Transcript {
  public:
    Transcript(STR const& path, GEN_DYN_FLAG_MANAGER const& manager)
        : m_file(path), m_manager(manager) {}

    void flag(GEN_DYN_FLAG value) { line(m_manager.get_flag_name(value)); }

    void truth(bool value) { line(value ? "1" : "0"); }

    void statistics() {
        int used = 0;  // MUTANT_EXCL_LINE: is set before it is read
        int dirty = 0; // MUTANT_EXCL_LINE: is set before it is read
        int clean = 0; // MUTANT_EXCL_LINE: is set before it is read
        m_manager.get_usage_stats(&used, &dirty, &clean);
        STR text;
        gen_sprintf(&text, "used=%d dirty= %d clean=%d", used, dirty, clean);
        line(text);
    }

  private:
    void line(std::string_view text) {
        if (m_file.is_open())
            m_file.put_line(text);
    }

    TextFile m_file;
    GEN_DYN_FLAG_MANAGER const& m_manager;
};

/// Those that the self-test leaves behind.
struct Flags {
    GEN_DYN_FLAG f1, f3, f4, f5;
};

/// What the operators make of a mask of f4 and f5.
void write_tests_of(GEN_DYN_FLAG mask, Flags const& flags, Transcript& transcript) {
    auto const& [f1, f3, f4, f5] = flags;
    constexpr GEN_DYN_FLAG none;
    GEN_DYN_FLAG const early = f1 | f3 | f4;
    GEN_DYN_FLAG const late = f4 | f5;
    transcript.truth((mask & f1) != none);
    // MUTANT_EXCL_LINE(& to |): none of the flags is empty
    transcript.truth((mask & early) != none);
    // MUTANT_EXCL_LINE(& to |): the mask has the fifth, which is not among them
    transcript.truth((mask & early) == early);
    // MUTANT_EXCL_LINE(& to |): the flag is not empty
    transcript.truth((mask & f5) != none);
    // MUTANT_EXCL_LINE(& to |): they are the mask
    transcript.truth((mask & late) == late);
    // MUTANT_EXCL_LINE(& to |): none of the flags is empty
    transcript.truth((mask & late) != none);
}

} // namespace

void GEN_DYN_FLAG::test_myself_out(GEN_DYN_FLAG_MANAGER* mgr) {
    if (mgr == nullptr) {
        report(reports::no_manager);
        return;
    }
    Transcript transcript("d:\\fenno\\comp\\mls\\flag_test.tst", *mgr);
    transcript.statistics();

    auto const created = [&](char const* name) {
        GEN_DYN_FLAG const flag = mgr->create_flag(name);
        transcript.flag(flag);
        return flag;
    };
    GEN_DYN_FLAG const f1 = created("f1");
    GEN_DYN_FLAG const f2 = created("f2");
    GEN_DYN_FLAG const f3 = created("f3");
    GEN_DYN_FLAG const f4 = created("f4");
    transcript.statistics();

    GEN_DYN_FLAG mask;
    for (GEN_DYN_FLAG const flag : {f1, f3, f4})
        transcript.flag(mask |= flag);
    transcript.flag((f4 | f3) & mask);
    transcript.flag(mask &= ~f3);
    transcript.flag(mask &= ~f1);

    mgr->destroy_flag(f2);
    transcript.statistics();

    GEN_DYN_FLAG const f5 = mgr->create_flag("f5");
    transcript.flag(mask |= f5);
    write_tests_of(mask, {f1, f3, f4, f5}, transcript);

    transcript.flag(mask);
    transcript.flag(mgr->get_named_flag("f4"));
}
