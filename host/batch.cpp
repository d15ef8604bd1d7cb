#include "batch.h"

#include "input.h"
#include "json.h"
#include "query.h"

#include <algorithm>

namespace {

Status ask_for(std::string& name, Answer& one, Batch::Ask const& ask) {
    if (name.find('\0') == std::string::npos)
        return ask(name, one);
    // An empty line all the same: which line is whose shows by counting.
    one.view("");
    one.remark("a name contains a NUL byte; with -0 names end with one");
    return STATUS_USAGE;
}

void write(Answer const& one, Status status, std::FILE* stream) {
    if (one.for_scripts()) {
        print_json_inline(one, status != STATUS_YES, stream);
        std::fputc('\n', stream);
    } else {
        print_text(one, stream);
    }
    // Before what is remarked about it.
    std::fflush(stream);
    print_remarks(one);
}

} // namespace

void Batch::declare(Options& options) {
    options.flag("-0,--null", m_nul, "Names on standard input end with a NUL, not with their line");
}

bool Batch::is_asked_for(std::vector<std::string> const& names) {
    return std::find(names.begin(), names.end(), "-") != names.end();
}

Status Batch::answer(std::vector<std::string> const& names, Answer& all, Ask const& ask) const {
    Status worst = STATUS_YES;
    Value::List kept;
    std::FILE* const stream = all.stream();
    if (stream != nullptr)
        all.set_written();
    std::string fault = each(names, [&](std::string& name) {
        Answer one(all.for_scripts());
        Status const status = ask_for(name, one, ask);
        worst = std::max(worst, status);
        if (stream == nullptr) {
            kept.emplace_back(record_of(one, status != STATUS_YES));
            return true;
        }
        write(one, status, stream);
        // With nowhere to write no more is asked. print_reply reports it.
        return std::ferror(stream) == 0;
    });
    if (stream == nullptr)
        all.detail("answers", std::move(kept));
    if (fault.empty())
        return worst;
    all.remark(std::move(fault));
    return STATUS_USAGE;
}

std::string Batch::each(std::vector<std::string> const& names,
                        std::function<bool(std::string&)> const& take) const {
    for (std::string name : names) {
        if (name == "-") {
            if (std::string fault = read_pieces(m_nul ? '\0' : '\n', take); !fault.empty())
                return fault;
        } else if (!take(name)) {
            break;
        }
    }
    return "";
}
