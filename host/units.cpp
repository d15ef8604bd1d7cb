#include "command.h"
#include "gen_time_unit.h"

namespace {

/// One row of either table; @p Table is the class that answers for it.
template <typename Table>
Value row(auto key, auto const& data) {
    return Value::Record{
        {"index", Table::get_list_index(key)},
        {"short_name", data.short_name},
        {"long_name", data.long_name},
        {"magnitude", data.magnitude},
    };
}

class Units : public Command {
  public:
    Status run(Answer& answer) override {
        MEM_LIST<GEN_TIME_UNIT_DATA> units;
        GEN_TIME_UNIT::get_entire_list(&units);
        Value::List unit_rows;
        for (GEN_TIME_UNIT_DATA const& data : units)
            unit_rows.push_back(row<GEN_TIME_UNIT>(data.unit, data));
        answer.table("time_units", std::move(unit_rows));

        MEM_LIST<GEN_TIME_FREQ_DATA> frequencies;
        GEN_TIME_FREQ::get_entire_list(&frequencies);
        Value::List frequency_rows;
        for (GEN_TIME_FREQ_DATA const& data : frequencies)
            frequency_rows.push_back(row<GEN_TIME_FREQ>(data.freq, data));
        answer.table("frequency_units", std::move(frequency_rows));
        return STATUS_YES;
    }
};

} // namespace

void add_units(Commands& commands) {
    commands.add<Units>({
        .name = "units",
        .summary = "Lists the units of time and of frequency",
        .example = "  $ gen_query units\n"
                   "  index  short name  long name    magnitude\n"
                   "  0      s           second       0\n"
                   "  1      ms          millisecond  -3\n"
                   "  ...\n"
                   "The magnitude is a power of ten, relative to the second and to the hertz.",
    });
}
