// Where the satellites are and how the site sees them. Earth-fixed axes, metres, seconds, radians.
//
// Orbits are circles. A line of sight takes the time of flight and the turn of the Earth into account, so
// that ranges and range rates belong together to well below the resolution of the log.

#pragma once

#include "message_bodies.h"

namespace samplelog {

inline constexpr double pi = 3.141592653589793;
inline constexpr double speedOfLight = 299792458.0;
inline constexpr double earthRate = 7.2921151467e-5;     // rad/s
inline constexpr double gravityConstant = 3.986005e14;   // m^3/s^2
inline constexpr double synchronousRadius = 42164169.0;  // metres

struct SineCosine {
    double sine = 0.0;
    double cosine = 0.0;
};

// Both functions of any angle of moderate size, by polynomials: a library's may differ in the last bit from
// machine to machine, and the log would differ with them.
SineCosine sineCosine(double angle);

double dot(const Vector3& a, const Vector3& b);

// A circular orbit. `node` is the Earth-fixed longitude of its ascending node at time 0, `argument` the angle
// from the node to the satellite at time 0.
struct Orbit {
    double radius = 0.0;
    double rate = 0.0;  // rad/s
    double sineOfInclination = 0.0;
    double cosineOfInclination = 0.0;
    double inclination = 0.0;
    double node = 0.0;
    double argument = 0.0;
};

Orbit makeOrbit(double radius, double inclination, double node, double argument);

// An orbit of the Earth's own rate, over the given longitude: a point in the sky without inclination, a
// figure of eight with.
Orbit makeSynchronousOrbit(double inclination, double longitude, double argument);

struct StateVector {
    Vector3 position;
    Vector3 velocity;  // over the turning Earth
};

StateVector stateOf(const Orbit& orbit, double time);

// A place on the Earth.
struct Site {
    Vector3 position;
    Vector3 up;
};

Site makeSite(double latitude, double longitude, double height);

struct LineOfSight {
    double range = 0.0;      // metres
    double rangeRate = 0.0;  // m/s
    double sineOfElevation = 0.0;
    double sineOfElevationRate = 0.0;  // 1/s
};

// The signal that reaches the site at `time`.
LineOfSight lineOfSight(const Orbit& orbit, const Site& site, double time);

// The sine of elevation alone, to a few seconds of arc; enough to tell what is in view.
double roughSineOfElevation(const Orbit& orbit, const Site& site, double time);

}  // namespace samplelog
