#include "standard/navigation_record.h"

#include <algorithm>
#include <span>

#include "standard/navigation_forms.h"
#include "standard/navigation_time.h"
#include "standard/navigation_values.h"

namespace orbconv::standard {

namespace {

constexpr std::int32_t greatestSatellite = 99;  // two digits

// Fills the record's values from a row of columns.
template <class Entry>
class ValueFiller {
public:
    ValueFiller(NavigationRecord& record, const Entry& entry, const RecordTimes& times)
        : record_(record), entry_(entry), times_(times) {}

    // False for a value that cannot be printed.
    bool fill(std::span<const Column<Entry>> columns) {
        return std::ranges::all_of(columns, [&](Column<Entry> column) { return fillOne(column); });
    }

private:
    bool fillOne(Column<Entry> column) {
        const std::optional<double> value = column(entry_, times_);
        const std::optional<double> shown = value ? printable(*value) : blankValue;
        if (!shown) {
            return false;
        }
        if (column == columns::transmission<Entry>) {
            record_.transmission = next_;
        }
        record_.values[next_++] = *shown;
        return true;
    }

    NavigationRecord& record_;
    const Entry& entry_;
    const RecordTimes& times_;
    std::size_t next_ = 0;
};

template <class Entry, std::size_t Forms>
std::optional<NavigationRecord> filled(NavType type, const Entry& entry, const RecordTimes& times,
                                       const std::array<RecordForm<Entry>, Forms>& forms) {
    for (const RecordForm<Entry>& form : forms) {
        if (form.type != type) {
            continue;
        }
        NavigationRecord record{.type = type, .epoch = times.epoch, .orbitLines = form.lines.size()};
        record.values.fill(blankValue);
        ValueFiller<Entry> filler(record, entry, times);
        bool sound = filler.fill(form.epochLine);
        for (const OrbitLine<Entry>& line : form.lines) {
            sound = sound && filler.fill(line);
        }
        return sound ? std::optional(record) : std::nullopt;
    }
    return std::nullopt;
}

// Records with Kepler elements; the newer messages print no week.
WeekField weekFieldOf(NavType type) {
    switch (type) {
        case NavType::cnav:
        case NavType::cnv2:
        case NavType::cnv1:
        case NavType::cnv3: return WeekField::missing;
        default: return WeekField::printed;
    }
}

struct RecordMaker {
    Constellation constellation;
    const ReceptionTime& received;

    template <class Entry, std::size_t Forms>
    std::optional<NavigationRecord> kepler(NavType type, const Entry& entry,
                                           const std::array<RecordForm<Entry>, Forms>& forms) const {
        const auto times = timesOf(entry.orbit, weekCountOf(constellation), weekFieldOf(type), received);
        return times ? filled(type, entry, *times, forms) : std::nullopt;
    }

    std::optional<NavigationRecord> operator()(const reading::GpsEphemeris& gps) const {
        return kepler(gps.type, gps, gpsRecordForms);
    }
    std::optional<NavigationRecord> operator()(const reading::GalileoEphemeris& galileo) const {
        return kepler(galileo.type, galileo, galileoRecordForms);
    }
    std::optional<NavigationRecord> operator()(const reading::BeidouEphemeris& beidou) const {
        return kepler(beidou.type, beidou, beidouRecordForms);
    }
    std::optional<NavigationRecord> operator()(const reading::NavicEphemeris& navic) const {
        return kepler(NavType::lnav, navic, navicRecordForms);
    }
    std::optional<NavigationRecord> operator()(const reading::GlonassEphemeris& glonass) const {
        const auto times = timesOf(glonass, received);
        return times ? filled(NavType::none, glonass, *times, glonassRecordForms) : std::nullopt;
    }
    // No ephemeris.
    template <class Other>
    std::optional<NavigationRecord> operator()(const Other& /*other*/) const {
        return std::nullopt;
    }
};

}  // namespace

std::optional<NavigationRecord> recordOf(const reading::Broadcast& broadcast, const ReceptionTime& received) {
    if (broadcast.sv < 1 || broadcast.sv > greatestSatellite) {
        return std::nullopt;
    }
    auto record = std::visit(RecordMaker{broadcast.constellation, received}, broadcast.body);
    if (record) {
        record->constellation = broadcast.constellation;
        record->sv = broadcast.sv;
        record->typeName = broadcast.constellation == Constellation::glonass ? std::string_view("FDMA")
                                                                             : navTypeName(record->type);
    }
    return record;
}

}  // namespace orbconv::standard
