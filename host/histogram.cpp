// With both edges given, numbers are counted as they are read. Else all are kept first: the range
// is known at the end of input alone.

#include "command.h"
#include "gen_bindata.h"
#include "input.h"
#include "number_stream.h"
#include "reports.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <list>
#include <memory>
#include <optional>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr std::size_t default_columns = 80;

/// Columns of the terminal, or what COLUMNS says where there is none.
std::size_t terminal_columns() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0)
        return size.ws_col;
    char const* const setting = std::getenv("COLUMNS");
    long const columns = setting != nullptr ? std::strtol(setting, nullptr, 10) : 0;
    // What no terminal has is taken for a mistake.
    return columns > 0 && columns < 10000 ? static_cast<std::size_t>(columns) : default_columns;
}

/// Shows on standard error that long input is being read, if that is a terminal.
class Progress {
  public:
    ~Progress() {
        if (m_shown)
            std::fputs("\r\033[K", stderr);
    }

    void step() {
        constexpr std::size_t interval = 1 << 20;
        if (++m_count % interval == 0 && m_terminal) {
            std::fprintf(stderr, "\r%.1f million numbers", static_cast<double>(m_count) / 1e6);
            m_shown = true;
        }
    }

  private:
    bool m_terminal = isatty(STDERR_FILENO) == 1;
    bool m_shown = false;
    std::size_t m_count = 0;
};

/// Items that are in no bin.
struct Outside {
    std::size_t below = 0;
    std::size_t above = 0;
    std::size_t not_a_number = 0;

    bool any() const { return below + above + not_a_number != 0; }
};

struct Range {
    double low;
    double high;
};

/// From the least to the greatest number, edges that are given excepted. Where that has no width,
/// as around a single value, the edges that are not given make some room.
Range range_of(std::vector<double> const& items, std::optional<double> low,
               std::optional<double> high) {
    constexpr double largest = std::numeric_limits<double>::max();
    Range data{largest, -largest};
    for (double const item : items) {
        if (!std::isfinite(item))
            continue;
        data.low = std::min(data.low, item);
        data.high = std::max(data.high, item);
    }
    Range range{low.value_or(data.low), high.value_or(data.high)};
    if (range.low < range.high)
        return range;
    if (!low)
        range.low = high.value_or(data.low);
    if (!high)
        range.high = low.value_or(data.high);
    // Half a unit alone would be lost in the rounding of a large number.
    double const room = std::max(0.5, std::abs(range.low) * 1e-6);
    if (!low)
        range.low = std::max(range.low - room, -largest);
    if (!high)
        range.high = std::min(range.high + room, largest);
    return range;
}

std::string short_number(double number, int digits) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*g", digits, number);
    return text;
}

/// Least digits, no fewer than the usual six, with which no bin's edges look alike.
int digits_for(GEN_BINDATA const& histogram) {
    constexpr int usual = 6;
    constexpr int all = std::numeric_limits<double>::max_digits10;
    auto const separates_edges = [&histogram](int digits) {
        for (unsigned i = 0; i < histogram.num_bins(); ++i)
            if (short_number(histogram.lowbound(i), digits) ==
                short_number(histogram.highbound(i), digits))
                return false;
        return true;
    };
    int digits = usual;
    while (digits < all && !separates_edges(digits))
        ++digits;
    return digits;
}

double percent_of(unsigned count, unsigned total) {
    return total == 0 ? 0 : 100.0 * count / total;
}

/// One line a bin, bars as long as the terminal allows. A narrow one sees no bars, a very narrow
/// one no shares either.
class Picture {
  public:
    Picture(GEN_BINDATA const& histogram, std::size_t columns)
        : m_histogram(histogram), m_digits(digits_for(histogram)) {
        for (unsigned i = 0; i < histogram.num_bins(); ++i) {
            m_label_width = std::max(m_label_width, label(i).size());
            m_largest = std::max(m_largest, histogram.item_count(i));
        }
        m_count_width = std::to_string(m_largest).size();
        std::size_t const counts = m_label_width + gap + m_count_width;
        std::size_t const shares = counts + share_width;
        m_has_shares = columns >= shares;
        m_bar_width = columns > shares + gap ? columns - shares - gap : 0;
    }

    std::string line(unsigned i) const {
        unsigned const count = m_histogram.item_count(i);
        std::string text = label(i);
        text.resize(m_label_width + gap, ' ');
        std::string const digits = std::to_string(count);
        text += std::string(m_count_width - digits.size(), ' ') + digits;
        if (m_has_shares) {
            char share[16];
            std::snprintf(share, sizeof share, "  %5.1f%%", percent_of(count, m_histogram.size()));
            text += share;
        }
        if (count == 0 || m_bar_width == 0)
            return text;
        auto const length = static_cast<std::size_t>(
            std::lround(static_cast<double>(m_bar_width) * count / m_largest));
        // A bin that is not empty has a bar, however short.
        return text + std::string(gap, ' ') + std::string(std::max<std::size_t>(length, 1), '#');
    }

  private:
    static constexpr std::size_t gap = 2;
    static constexpr std::size_t share_width = 8; ///< its gap included

    std::string label(unsigned i) const {
        bool const last = i + 1 == m_histogram.num_bins();
        return "[" + short_number(m_histogram.lowbound(i), m_digits) + ", " +
               short_number(m_histogram.highbound(i), m_digits) + (last ? "]" : ")");
    }

    GEN_BINDATA const& m_histogram;
    int m_digits;
    std::size_t m_label_width = 0;
    std::size_t m_count_width = 1;
    std::size_t m_bar_width = 0;
    bool m_has_shares = false;
    unsigned m_largest = 1; ///< of the counts; 1 at least, since bars are divided by it
};

class Histogram : public Command {
  public:
    void declare(Options& options) override {
        options.argument("file", &m_file, "The numbers; standard input if not given").file();
        options.value("-l,--low", &m_low, "Lower edge of the first bin; least number if not given");
        options.value("-u,--high", &m_high,
                      "Upper edge of the last bin; greatest number if not given");
        options.value("-b,--bins", &m_bins, "Number of bins").between(1, 1000000);
    }

    Status run(Answer& answer) override {
        if (m_low && !std::isfinite(*m_low))
            return refuse("histogram: --low is not a finite number", answer);
        if (m_high && !std::isfinite(*m_high))
            return refuse("histogram: --high is not a finite number", answer);
        if (m_low && m_high && !(*m_low < *m_high))
            return refuse("histogram: --low has to be below --high", answer);
        std::string const problem = m_low && m_high ? count_directly() : collect_and_count();
        if (!problem.empty())
            return refuse(problem, answer);
        if (m_histogram == nullptr) {
            answer.remark("no numbers");
            answer.field("items", 0);
            return STATUS_NO;
        }
        describe(answer);
        return status_of(m_histogram->size() != 0 && m_reported.empty());
    }

  private:
    static Status refuse(std::string const& problem, Answer& answer) {
        answer.remark(problem);
        return STATUS_USAGE;
    }

    /// With the range known, nothing but the counts is kept.
    std::string count_directly() {
        if (!make_histogram({*m_low, *m_high}))
            return unusable_range;
        return read([this](double item) { count(item); });
    }

    std::string collect_and_count() {
        std::vector<double> items;
        std::string problem = read([&items](double item) { items.push_back(item); });
        auto const is_finite = [](double item) { return std::isfinite(item); };
        if (!problem.empty() || std::none_of(items.begin(), items.end(), is_finite))
            return problem;
        if (!make_histogram(range_of(items, m_low, m_high)))
            return unusable_range;
        for (double const item : items)
            count(item);
        return "";
    }

    std::string read(std::function<void(double)> const& take) const {
        std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(nullptr, std::fclose);
        if (m_file != "-") {
            file.reset(std::fopen(m_file.c_str(), "re"));
            if (file == nullptr)
                return reading_fault(m_file);
        }
        Progress progress;
        std::string fault = read_numbers(file != nullptr ? file.get() : stdin, [&](double item) {
            progress.step();
            take(item);
        });
        return fault.empty() && std::ferror(file != nullptr ? file.get() : stdin) != 0
                   ? reading_fault(m_file)
                   : fault;
    }

    bool make_histogram(Range range) {
        if (!std::isnormal((range.high - range.low) / m_bins))
            return false;
        Reports reports;
        // Never destroyed: they live as long as the program, as their counts do in any case.
        static auto& histograms = *new std::list<GEN_BINDATA>;
        m_histogram = &histograms.emplace_back(range.low, range.high, m_bins);
        m_range = range;
        m_reported = reports.take();
        return true;
    }

    /// What lies outside gen would report, and count in the total.
    void count(double item) {
        if (item >= m_range.low && item <= m_range.high)
            m_histogram->add_item(item);
        else if (std::isnan(item))
            ++m_outside.not_a_number;
        else
            ++(item < m_range.low ? m_outside.below : m_outside.above);
    }

    void describe(Answer& answer) const {
        if (answer.for_scripts())
            list_bins(answer);
        else
            draw(answer);
        Value const outside = Value::Record{{"below", m_outside.below},
                                            {"above", m_outside.above},
                                            {"not_a_number", m_outside.not_a_number}};
        if (m_outside.any())
            answer.field("not_counted", outside);
        else
            answer.detail("not_counted", outside);
        for (auto const& [condition, times] : m_reported)
            answer.field("reported", condition);
    }

    void draw(Answer& answer) const {
        Picture const picture(*m_histogram, terminal_columns());
        for (unsigned i = 0; i < m_histogram->num_bins(); ++i)
            answer.view(picture.line(i));
        answer.field("items", m_histogram->size());
    }

    void list_bins(Answer& answer) const {
        answer.field("items", m_histogram->size());
        answer.detail("low", m_range.low);
        answer.detail("high", m_range.high);
        Value::List bins;
        bins.reserve(m_histogram->num_bins());
        for (unsigned i = 0; i < m_histogram->num_bins(); ++i) {
            unsigned const count = m_histogram->item_count(i);
            bins.push_back(Value::Record{{"low", m_histogram->lowbound(i)},
                                         {"high", m_histogram->highbound(i)},
                                         {"count", count},
                                         {"percent", percent_of(count, m_histogram->size())}});
        }
        answer.detail("bins", std::move(bins));
    }

    static constexpr char const* unusable_range =
        "the range is wider than a number can express, or its bins are narrower";

    std::string m_file = "-";
    std::optional<double> m_low;
    std::optional<double> m_high;
    unsigned m_bins = 10;
    GEN_BINDATA* m_histogram = nullptr; ///< null where there is nothing that gives a range
    Range m_range{};
    Outside m_outside;
    std::vector<Reports::Report> m_reported;
};

} // namespace

void add_histogram(Commands& commands) {
    commands.add<Histogram>({
        .name = "histogram",
        .summary = "Counts numbers into bins of equal width and draws them",
        .example = "  $ seq 1 100 | COLUMNS=40 gen_query histogram --bins 4\n"
                   "  [1, 25.75)     25   25.0%  #############\n"
                   "  [25.75, 50.5)  25   25.0%  #############\n"
                   "  [50.5, 75.25)  25   25.0%  #############\n"
                   "  [75.25, 100]   25   25.0%  #############\n"
                   "  items  100\n"
                   "\n"
                   "A bin has its lower edge and not its upper one, the last bin both. With both\n"
                   "--low and --high input of any length is counted in constant memory. Numbers\n"
                   "outside are remarked and not counted. Bars fit the terminal, or COLUMNS.\n"
                   "Status 1 says that none was counted.",
    });
}
