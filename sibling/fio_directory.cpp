#include "fio_directory.h"

#include "fio_file_system.h"

void fio_end_with_slash(STR& directory) {
    if (!directory.empty() && directory.back() != '/')
        directory += '/';
}

STR fio_absolute_directory(std::string_view directory) {
    STR result;
    if (!directory.starts_with('/')) {
        result = FIO_FILE_SYSTEM::get_current_directory();
        if (result.empty())
            return result;
        fio_end_with_slash(result);
    }
    result += directory;
    fio_end_with_slash(result);
    return result;
}
