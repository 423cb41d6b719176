// Undamaged logs of random content: epochs of five systems with every measurement message, and ephemerides
// between them.
#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "samplelog/log_builder.h"

namespace testsupport {

struct RandomLogForm {
    unsigned seed = 1;
    int epochs = 4;
    int mostOfASystem = 12;
    // The system of the last satellite of every list: its range difference is the one that the second band
    // of all satellites takes.
    std::uint8_t lastSystem = samplelog::SystemCode::gps;
    // With DC, which is the one message that can make the program say something.
    bool fullDopplers = true;
};

// A message and the bytes in which it stands.
struct PlacedMessage {
    std::string id;
    std::size_t begin;
    std::size_t end;
};

class RandomLog {
public:
    explicit RandomLog(const RandomLogForm& form) : random_(form.seed), form_(form) {
        log_.uo({.a0 = 1e-9, .leapSeconds = 18});
        log_.pv({-2700123.5, 12.25, 4500000.0625}).to(0.000125);
        for (int epoch = 0; epoch < form.epochs; ++epoch) {
            addEpoch(epoch);
        }
        log_.time(timeOf(form.epochs));
        findMessages();
    }

    [[nodiscard]] const std::string& bytes() const { return log_.bytes(); }
    // The satellites of each epoch, in the order of its list.
    [[nodiscard]] const std::vector<std::vector<samplelog::Satellite>>& lists() const { return lists_; }
    [[nodiscard]] const std::vector<PlacedMessage>& messages() const { return messages_; }

private:
    static std::uint32_t timeOf(int epoch) { return 3600000 + 30000 * static_cast<std::uint32_t>(epoch); }

    int between(int low, int high) {
        return low + static_cast<int>(random_() % static_cast<unsigned>(high - low + 1));
    }
    template <class Element>
    std::vector<Element> elements(std::size_t count, int low, int high) {
        std::vector<Element> values(count);
        std::ranges::generate(values, [&] { return static_cast<Element>(between(low, high)); });
        return values;
    }

    // Numbers of a system are not repeated; those of GLONASS are the slots that NN tells.
    std::vector<samplelog::Satellite> satelliteList() {
        using samplelog::SystemCode;
        std::vector<samplelog::Satellite> list;
        for (const std::uint8_t code : {SystemCode::gps, SystemCode::glonass, SystemCode::galileo,
                                        SystemCode::beidou, SystemCode::navic}) {
            const int count = between(0, form_.mostOfASystem);
            const int first = between(1, 8);
            for (int i = 0; i < count; ++i) {
                const int number = code == SystemCode::glonass ? between(-7, 6) : first + i;
                list.push_back({code, number});
            }
        }
        std::ranges::shuffle(list, random_);
        const int last = form_.lastSystem == SystemCode::glonass ? between(-7, 6) : 30;
        list.push_back({form_.lastSystem, last});
        return list;
    }

    void addEpoch(int epoch) {
        using samplelog::Band;
        constexpr int large = 1'000'000'000;
        log_.time(timeOf(epoch)).rd(2024, 3, 5);
        lists_.push_back(satelliteList());
        const auto& list = lists_.back();
        const std::size_t count = list.size();
        log_.sx(list).nn(slots(list));
        log_.rc(elements<std::int32_t>(count, -large, large));
        log_.rx(elements<std::int32_t>(count, -large, large));
        if (form_.fullDopplers) {
            log_.dc(elements<std::int32_t>(count, -large, large));
        }
        log_.dx(elements<std::int32_t>(count, -large, large));
        for (const Band band : {Band::c, Band::b1, Band::b2, Band::b3, Band::b5, Band::l}) {
            // The flags of the first epoch show every signal, later ones some.
            log_.flags(band, epoch == 0 ? std::vector<std::uint16_t>(count, 0x40)
                                        : elements<std::uint16_t>(count, 0, 0xFF));
            log_.rangeDeltas(band, elements<std::int16_t>(count, -32768, 32767));
            log_.phases(band, elements<std::int32_t>(count, -large, large));
            log_.dopplerDeltas(band, elements<std::int16_t>(count, -32768, 32767));
            log_.strengths(band, elements<std::uint8_t>(count, 0, 255));
        }
        addNavigation();
        log_.td();
    }

    // Slots 1 to 24, each once.
    std::vector<std::uint8_t> slots(const std::vector<samplelog::Satellite>& list) {
        std::vector<std::uint8_t> all(24);
        for (std::size_t i = 0; i < all.size(); ++i) {
            all[i] = static_cast<std::uint8_t>(i + 1);
        }
        std::ranges::shuffle(all, random_);
        const auto glonass = std::ranges::count_if(list, [](const samplelog::Satellite& satellite) {
            return satellite.systemCode == samplelog::SystemCode::glonass;
        });
        all.resize(static_cast<std::size_t>(std::min<std::ptrdiff_t>(glonass, 24)));
        return all;
    }

    // An ephemeris of each system, no two of one satellite and time, in falling order of time.
    void addNavigation() {
        const samplelog::KeplerBlock orbit = {.sv = static_cast<std::uint8_t>(between(1, 30)),
                                              .toe = nextToe_,
                                              .sqrtA = 5153.0 + between(0, 999) / 1000.0,
                                              .M0 = between(-1000, 1000) / 1000.0};
        log_.ge123(orbit)
            .ie(orbit)
            .en({.kepler = orbit, .navFlags = 1})
            .cn134({.kepler = orbit, .navFlags = 1});
        log_.ne88({.sv = orbit.sv, .tk = nextToe_, .tb = nextToe_});
        log_.io({.alpha0 = 1.0F + static_cast<float>(nextToe_)})
            .uo({.a0 = 1.0 * nextToe_, .leapSeconds = 18});
        nextToe_ -= 16;
    }

    // By the framing alone.
    void findMessages() {
        const std::string& bytes = log_.bytes();
        for (std::size_t begin = 0; begin < bytes.size();) {
            const std::string id = bytes.substr(begin, 2);
            const std::size_t length = std::stoul(bytes.substr(begin + 2, 3), nullptr, 16);
            const std::size_t end = begin + 5 + length + (id == "TD" ? 2 : 1);
            messages_.push_back({id, begin, end});
            begin = end;
        }
    }

    std::mt19937 random_;
    RandomLogForm form_;
    samplelog::LogBuilder log_;
    std::vector<std::vector<samplelog::Satellite>> lists_;
    std::vector<PlacedMessage> messages_;
    std::int32_t nextToe_ = 80000;
};

}  // namespace testsupport
