// Checks a simulation condition: prints its prefix form, and what is wrong with it.
//   check_condition CONDITION

#include <cstdio>
#include <gen.h>

GEN_DEFINE_MAIN(argc, argv) {
    if (argc != 2) {
        std::fputs("usage: check_condition CONDITION\n", stderr);
        return 2;
    }
    GEN_BP_PARSER parser;
    STR condition = argv[1];
    bool const wrong = parser.parse_string(&condition);
    std::printf("%s\n", condition.c_str());
    std::fputs(parser.error_text().c_str(), stderr);
    return wrong ? 1 : 0;
}
