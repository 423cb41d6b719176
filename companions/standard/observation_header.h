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
    const Columns& columns;
    const ContentSurvey& whole;  // of all files: what the columns and their phase shifts are of
    const ContentSurvey& part;   // of this file; an epoch at least
    TimeScale scale;
    std::optional<int> leapSeconds;
};

void writeObservationHeader(TextWriter& out, const HeaderFacts& facts);

// The three letters of a time scale.
std::string_view timeSystemCode(TimeScale scale);

}  // namespace orbconv::standard
