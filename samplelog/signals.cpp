#include "signals.h"

#include "message_bodies.h"

namespace samplelog {

namespace {

constexpr double megahertz = 1e6;

// Frequencies in MHz, in the order of the families c, 1, 2, 3, 5, l.
constexpr SignalPlan gpsPlan = {1e-11, 0.075, 1575.42, {1575.42, 1575.42, 1227.6, 1227.6, 1176.45, 1575.42}};
constexpr SignalPlan galileoPlan = {
    2e-11, 0.085, 1575.42, {1575.42, 1191.795, 1207.14, 1278.75, 1176.45, 0.0}};
constexpr SignalPlan beidouPlan = {
    2e-11, 0.105, 1561.098, {1561.098, 1191.795, 1207.14, 1268.52, 1176.45, 1575.42}};
// The S band refers its Doppler to L1, although only the newest satellites have a signal there.
constexpr SignalPlan navicPlan = {2e-11, 0.105, 1575.42, {2492.028, 0.0, 0.0, 0.0, 1176.45, 1575.42}};

SignalPlan glonassPlan(int channel) {
    const double first = 1602.0 + 0.5625 * channel;
    const double second = 1246.0 + 0.4375 * channel;
    return {1e-11, 0.075, first, {first, first, second, second, 1202.025, 0.0}};
}

SignalPlan inHertz(SignalPlan plan) {
    plan.dopplerReference *= megahertz;
    for (double& carrier : plan.carrier) {
        carrier *= megahertz;
    }
    return plan;
}

}  // namespace

SignalPlan signalPlanOf(std::uint8_t systemCode, int channel) {
    switch (systemCode) {
        case SystemCode::gps: return inHertz(gpsPlan);
        case SystemCode::glonass: return inHertz(glonassPlan(channel));
        case SystemCode::galileo: return inHertz(galileoPlan);
        case SystemCode::beidou: return inHertz(beidouPlan);
        default: return inHertz(navicPlan);
    }
}

}  // namespace samplelog
