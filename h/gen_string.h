#pragma once

/// Strings, numbers in them, messages and checksums.

#include "gen_string_checksum.h"
#include "gen_string_compare.h"
#include "gen_string_fold.h"
#include "gen_string_lex.h"
#include "gen_string_message.h"
#include "gen_string_number.h"
#include "gen_string_text.h"
#include "gen_string_wildcard.h"
