// The header of an observation file.
#pragma once

#include "standard/columns.h"
#include "standard/header_opening.h"
#include "standard/header_texts.h"
#include "standard/survey.h"
#include "text/text_writer.h"

namespace orbconv::standard {

struct HeaderFacts {
    RinexVersion version;
    RunTime runTime;
    const HeaderTexts& texts;
    const Survey& survey;  // of an epoch at least
    const Columns& columns;
};

void writeObservationHeader(TextWriter& out, const HeaderFacts& facts);

// The three letters of a time scale.
std::string_view timeSystemCode(TimeScale scale);

}  // namespace orbconv::standard
