// The columns of each constellation's observation records: the codes that the header lists.
#pragma once

#include <string>
#include <vector>

#include "standard/survey.h"

namespace orbconv::standard {

struct Column {
    std::size_t band;
    Kind kind;
};
using Columns = PerConstellation<std::vector<Column>>;

// The four codes of each signal that some epoch of the file has: C, L, D, S.
Columns columnsOf(const ContentSurvey& content);

// The letter of a file: that of its only system, or M.
char systemLetterOf(const Columns& columns);

// Such as "C1C".
std::string codeOf(Constellation constellation, const Column& column);

}  // namespace orbconv::standard
