// Logs of a few epochs with all arrays of some bands, that set off no finding but those of their satellites.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "companions/support/inspected.h"
#include "samplelog/log_builder.h"

namespace testsupport {

using Satellites = std::vector<samplelog::Satellite>;

// `count` of a constellation, numbered from 1 on.
Satellites satellitesOf(std::uint8_t systemCode, int count);

// All arrays of a band, for satellites that have its signal.
void putBand(samplelog::LogBuilder& log, samplelog::Band band, std::size_t count);

// An epoch `index` seconds behind cleanStart, with NN if there are slots.
void putEpoch(samplelog::LogBuilder& log, int index, const Satellites& satellites,
              const std::vector<samplelog::Band>& bands, const std::vector<std::uint8_t>& slots = {});

// A date and the messages of putCleanStart.
samplelog::LogBuilder startedLog();

// Such a start and three epochs of the same.
orbconv::inspect::LogSummary threeEpochs(const Satellites& satellites,
                                         const std::vector<samplelog::Band>& bands,
                                         const std::vector<std::uint8_t>& slots = {});

}  // namespace testsupport
