// What is fuzzed of advanced expressions: the compiler with any text, the evaluation with any tokens and values.
#pragma once

#include "core/platform/Files.h"

#include <string>

namespace tallybook::fuzz {

// The input is the text of an expression. What compiles must come back from its display; an error must have a place.
std::string probeCompile(platform::ByteSpan input);

// The input is result type, decimals, the number of tokens (at most 48), that many tokens (a code; the codes that
// have texts are followed by a length and the text), then kinds and values of fields; what it lacks is 0. Evaluation
// must give a value or a reason.
std::string probeEvaluate(platform::ByteSpan input);

} // namespace tallybook::fuzz
