#include "geometry.h"

#include <cmath>

namespace samplelog {

namespace {

// Coefficients of the series of sine and cosine, good to a double's last digits up to a quarter of pi.
double sineSeries(double x) {
    const double s = x * x;
    const double tail =
        -1.0 / 6.0 +
        s * (1.0 / 120.0 +
             s * (-1.0 / 5040.0 +
                  s * (1.0 / 362880.0 +
                       s * (-1.0 / 39916800.0 + s * (1.0 / 6227020800.0 - s * (1.0 / 1307674368000.0))))));
    return x + x * s * tail;
}

double cosineSeries(double x) {
    const double s = x * x;
    const double tail =
        1.0 / 24.0 +
        s * (-1.0 / 720.0 +
             s * (1.0 / 40320.0 +
                  s * (-1.0 / 3628800.0 +
                       s * (1.0 / 479001600.0 - s * (1.0 / 87178291200.0 - s * (1.0 / 20922789888000.0))))));
    return 1.0 - 0.5 * s + s * s * tail;
}

// The parts of a line of sight that don't change with the time of flight.
struct NodeAxes {
    SineCosine node;
    double time = 0.0;
};

NodeAxes nodeAxes(const Orbit& orbit, double time) {
    return {sineCosine(orbit.node - earthRate * time), time};
}

// Position in the Earth-fixed axes of `axes.time` of the satellite `flight` seconds earlier, and its velocity
// against the stars in the same axes.
StateVector inertialState(const Orbit& orbit, const NodeAxes& axes, double flight) {
    const SineCosine u = sineCosine(orbit.argument + orbit.rate * (axes.time - flight));
    const double cosineI = orbit.cosineOfInclination;
    const double sineI = orbit.sineOfInclination;
    const double sineL = axes.node.sine;
    const double cosineL = axes.node.cosine;
    const double a = orbit.radius;
    const double v = orbit.radius * orbit.rate;
    return {
        {a * (u.cosine * cosineL - u.sine * cosineI * sineL),
         a * (u.cosine * sineL + u.sine * cosineI * cosineL), a * (u.sine * sineI)},
        {v * (-u.sine * cosineL - u.cosine * cosineI * sineL),
         v * (-u.sine * sineL + u.cosine * cosineI * cosineL), v * (u.cosine * sineI)},
    };
}

// How the turn of the Earth moves a fixed point of the sky.
Vector3 apparentTurn(const Vector3& position) {
    return {earthRate * position.y, -earthRate * position.x, 0.0};
}

Vector3 sum(const Vector3& a, const Vector3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Vector3 difference(const Vector3& a, const Vector3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

double length(const Vector3& a) {
    return std::sqrt(dot(a, a));
}

constexpr double typicalFlight = 0.08;

}  // namespace

SineCosine sineCosine(double angle) {
    // Half of pi in two parts, the first short enough for its products with whole numbers to be exact.
    constexpr double halfPiHigh = 0x1.921fb544p+0;
    constexpr double halfPiLow = 0x1.0b4611a626331p-34;
    const double quarters = std::floor(angle * (2.0 / pi) + 0.5);
    const double rest = (angle - quarters * halfPiHigh) - quarters * halfPiLow;
    const double s = sineSeries(rest);
    const double c = cosineSeries(rest);
    switch (static_cast<long long>(quarters) & 3) {
        case 0: return {s, c};
        case 1: return {c, -s};
        case 2: return {-s, -c};
        default: return {-c, s};
    }
}

double dot(const Vector3& a, const Vector3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Orbit makeOrbit(double radius, double inclination, double node, double argument) {
    const SineCosine i = sineCosine(inclination);
    return {
        .radius = radius,
        .rate = std::sqrt(gravityConstant / (radius * radius * radius)),
        .sineOfInclination = i.sine,
        .cosineOfInclination = i.cosine,
        .inclination = inclination,
        .node = node,
        .argument = argument,
    };
}

Orbit makeSynchronousOrbit(double inclination, double longitude, double argument) {
    Orbit orbit = makeOrbit(synchronousRadius, inclination, longitude - argument, argument);
    orbit.rate = earthRate;
    return orbit;
}

StateVector stateOf(const Orbit& orbit, double time) {
    const StateVector state = inertialState(orbit, nodeAxes(orbit, time), 0.0);
    return {state.position, sum(state.velocity, apparentTurn(state.position))};
}

Site makeSite(double latitude, double longitude, double height) {
    constexpr double equatorRadius = 6378137.0;
    constexpr double eccentricitySquared = 0.00669437999014;
    const SineCosine b = sineCosine(latitude);
    const SineCosine l = sineCosine(longitude);
    const double normal = equatorRadius / std::sqrt(1.0 - eccentricitySquared * b.sine * b.sine);
    return {
        {(normal + height) * b.cosine * l.cosine, (normal + height) * b.cosine * l.sine,
         (normal * (1.0 - eccentricitySquared) + height) * b.sine},
        {b.cosine * l.cosine, b.cosine * l.sine, b.sine},
    };
}

LineOfSight lineOfSight(const Orbit& orbit, const Site& site, double time) {
    const NodeAxes axes = nodeAxes(orbit, time);
    // Each round shrinks the error of the flight time by the ratio of the satellite's speed to light's; three
    // leave nothing that shows.
    double flight = typicalFlight;
    StateVector state;
    Vector3 view;
    for (int round = 0; round < 3; ++round) {
        state = inertialState(orbit, axes, flight);
        view = difference(state.position, site.position);
        flight = length(view) / speedOfLight;
    }
    const double range = length(view);
    const Vector3 toSatellite = {view.x / range, view.y / range, view.z / range};
    const Vector3 turn = apparentTurn(state.position);
    // While the range grows, the signal seen left ever earlier: that slows the satellite's own part.
    const double own = dot(toSatellite, state.velocity);
    const double rangeRate = (dot(toSatellite, turn) + own) / (1.0 + own / speedOfLight);
    const double sineOfElevation = dot(toSatellite, site.up);
    const double climb = dot(site.up, sum(state.velocity, turn));
    return {
        .range = range,
        .rangeRate = rangeRate,
        .sineOfElevation = sineOfElevation,
        .sineOfElevationRate = (climb - sineOfElevation * rangeRate) / range,
    };
}

double roughSineOfElevation(const Orbit& orbit, const Site& site, double time) {
    const StateVector state = inertialState(orbit, nodeAxes(orbit, time), typicalFlight);
    const Vector3 view = difference(state.position, site.position);
    return dot(view, site.up) / length(view);
}

}  // namespace samplelog
