#include "error_recorder.h"

static std::vector<ReportedError> recorded;

static void record(char const* condition, char const* owner, char const* source_file, int line) {
    recorded.push_back({condition, owner, source_file, line});
}

std::ostream& operator<<(std::ostream& stream, ReportedError const& error) {
    return stream << '"' << error.condition << "\" (" << error.owner << ", " << error.source_file
                  << ":" << error.line << ")";
}

ErrorRecorder::ErrorRecorder() : m_previous(err_set_internal_error_handler(record)) {
    recorded.clear();
}

ErrorRecorder::~ErrorRecorder() {
    err_set_internal_error_handler(m_previous);
}

std::vector<ReportedError> const& ErrorRecorder::errors() const {
    return recorded;
}

std::vector<std::string> ErrorRecorder::conditions() const {
    std::vector<std::string> texts;
    for (ReportedError const& error : recorded)
        texts.push_back(error.condition);
    return texts;
}

void ErrorRecorder::clear() {
    recorded.clear();
}
