// A log with every navigation message, and the lines that its records have in navigation files, by hand.
#pragma once

#include <string>
#include <vector>

#include "samplelog/log_builder.h"

namespace testsupport::fullNavigation {

using samplelog::KeplerBlock;
using samplelog::LogBuilder;
using samplelog::SystemCode;

using Lines = std::vector<std::string>;

// ---- the log ----

// One orbit for all satellites, of powers of two and of halves.
inline KeplerBlock orbit(std::uint8_t sv, std::int32_t toe) {
    return {.sv = sv,
            .tot = 7190,
            .flags = 3,
            .iodc = 77,
            .toc = 7200,
            .uraIndex = 1,
            .health = 1,
            .week = 300,
            .tgd = -0x1p-27F,
            .af2 = 0.0F,
            .af1 = 0x1p-36F,
            .af0 = -0x1p-13F,
            .toe = toe,
            .iode = 78,
            .sqrtA = 5153.5,
            .e = 0.0078125,
            .M0 = 1.0,
            .Omega0 = -0.5,
            .i0 = 0.25,
            .omega = 2.0,
            .deltaN = 0x1p-28F,
            .OmegaDot = -0x1p-27F,
            .IDOT = 0x1p-30F,
            .Crc = 250.5F,
            .Crs = -64.25F,
            .Cuc = -0x1p-20F,
            .Cus = 0x1p-17F,
            .Cic = 0x1p-24F,
            .Cis = -0x1p-23F};
}

inline void addGps(LogBuilder& log) {
    log.ge123(orbit(9, 7200)).ge123(orbit(9, 7200));  // the second is dropped
    log.ge168({.kepler = orbit(5, 7200),
               .navFlags = 2,
               .cnavToe = 5400,
               .adot = 0.5,
               .deltaNDot = 0.25F,
               .uraiEd = 1,
               .uraiNed0 = 2,
               .uraiNed1 = 3,
               .uraiNed2 = 4,
               .iscL1ca = 8.0F,  // no message of length 160 comes to store them
               .af0Delta = 0x1p-13F});
    log.ge123(orbit(5, 3600));
}

// The last repeats satellite and frame time of the one before it: it stands behind the count of three, where
// no sort reaches it, and the first dies for it.
inline void addGlonass(LogBuilder& log) {
    samplelog::GlonassBody body = {.sv = 1, .frequency = -7, .dayNumber = 800, .tk = 10, .tb = 18000};
    log.ne88(body);
    body.sv = 7;
    body.healthByte = 3;
    body.age = 4;
    body.x = 12345.678;
    body.y = -12345.678;
    body.z = 0.5;
    body.vx = 1.5F;
    body.vy = -2.5F;
    body.vz = 3.5F;
    body.ay = -0x1p-20F;
    body.tauN = 0x1p-14F;
    body.gamma = 0x1p-40F;
    log.ne88(body);
    body.sv = 2;
    body.tb = 14400;
    log.ne88(body);
    body.tb = 12600;
    log.ne103(body);
}

inline void addGalileo(LogBuilder& log) {
    samplelog::GalileoBody body = {.kepler = orbit(3, 7200), .bgdE5a = 0x1p-30F, .bgdE5b = -0x1p-29F};
    body.ai0 = 64.0F;
    body.ai1 = 0.5F;
    body.ionFlags = 5;
    body.navFlags = 1;
    log.en(body);
    body.ai0 = 32.0F;
    body.navFlags = 2;
    log.en(body);
}

inline void addBeidou(LogBuilder& log) {
    samplelog::BeidouBody body = {.kepler = orbit(30, 7200), .tgd2 = 0x1p-28F, .navFlags = 8};
    body.adot = 0.5;
    body.deltaNDot = 0.25F;
    body.sisai = 1.5F;
    log.cn152(body);
    body.kepler.sv = 31;
    body.navFlags = 0x20;
    log.cn160(body);  // stores none of these three
    body.kepler.sv = 32;
    body.navFlags = 0x40;
    log.cn152(body);
    body.kepler = orbit(6, 3600);
    body.navFlags = 1;
    body.aodc = 6;
    body.aode = 5;
    log.cn134(body);
}

inline LogBuilder fullLog() {
    LogBuilder log;
    log.time(3723000).rd(2024, 3, 5);
    addGps(log);
    addGlonass(log);
    addGalileo(log);
    addBeidou(log);
    log.ie(orbit(5, 7200)).ie(orbit(4, 7200));
    const samplelog::IonoBody iono = {.tot = 3601,
                                      .alpha0 = 1.0F,
                                      .alpha1 = 0.5F,
                                      .alpha2 = -0.25F,
                                      .alpha3 = 0.125F,
                                      .beta0 = 90112.0F,
                                      .beta1 = 16384.0F,
                                      .beta2 = -65536.0F};
    log.io(iono).ii(iono).ci(iono);
    const samplelog::TimeOffsetBody offset = {.a0 = -0x1p-30, .a1 = 0x1p-50F, .tot = 604784, .week = 300};
    log.uo(offset).cu(offset).iu(offset);
    log.eu({.utc = {.a0 = 0x1p-30, .a1 = 0.0F, .tot = 604784, .week = 300, .leapSeconds = 18},
            .a0Gps = 0x1p-27F,
            .a1Gps = 0.0F,
            .totGps = 86400,
            .weekGps = 301});
    log.nu({.tauC = -0x1p-30, .tauGps = 0x1p-27F});
    // Two epochs of two systems, so that there is an observation file.
    for (const std::uint32_t second : {3724U, 3725U}) {
        log.time(second * 1000).sx({{SystemCode::gps, 7}, {SystemCode::glonass, 1}}).td();
    }
    return log;
}

// ---- the lines ----

inline const std::string leapSeconds18 =
    "    18                                                      LEAP SECONDS";
inline const std::string endOfHeader =
    "                                                            END OF HEADER";

inline const std::string clockValues = "-1.220703125000D-04 1.455191522837D-11 0.000000000000D+00";
inline const std::string anomaly =
    "     7.800000000000D+01-6.425000000000D+01 1.170334495981D-08 3.141592653590D+00";
inline const std::string shape =
    "    -9.536743164062D-07 7.812500000000D-03 7.629394531250D-06 5.153500000000D+03";
inline const std::string node7200 =
    "     7.200000000000D+03 5.960464477539D-08-1.570796326795D+00-1.192092895508D-07";
inline const std::string node3600 =
    "     3.600000000000D+03 5.960464477539D-08-1.570796326795D+00-1.192092895508D-07";
inline const std::string inclination =
    "     7.853981852531D-01 2.505000000000D+02 6.283185307180D+00-2.340668991963D-08";
inline const std::string totAndFit = "     7.190000000000D+03 4.000000000000D+00";

inline Lines joined(const std::vector<Lines>& pieces) {
    Lines all;
    for (const Lines& piece : pieces) {
        all.insert(all.end(), piece.begin(), piece.end());
    }
    return all;
}

// The same record with the exponent letter e.
inline Lines plain(Lines lines) {
    for (std::string& line : lines) {
        for (std::size_t at = 1; (at = line.find('D', at)) != std::string::npos; ++at) {
            line[at] = 'e';
        }
    }
    return lines;
}

// An LNAV record of GPS or NavIC: flags 3 are L2 bits 1 and 0.
inline Lines lnavRecord(const std::string& head, const std::string& node) {
    return {head + clockValues,
            anomaly,
            shape,
            node,
            inclination,
            "     2.925836239953D-09 0.000000000000D+00 2.348000000000D+03 1.000000000000D+00",
            "     2.000000000000D+00 1.000000000000D+00-7.450580596924D-09 7.700000000000D+01",
            totAndFit};
}

inline const Lines gps5 = lnavRecord("G05 2024 03 05 01 00 00", node3600);
inline const Lines gps9 = lnavRecord("G09 2024 03 05 02 00 00", node7200);
inline const Lines gpsCnav = {
    "> EPH G05 CNAV",
    "G05 2024 03 05 02 00 00 0.000000000000e+00 1.455191522837e-11 0.000000000000e+00",
    "     5.000000000000e-01-6.425000000000e+01 1.170334495981e-08 3.141592653590e+00",
    "    -9.536743164062e-07 7.812500000000e-03 7.629394531250e-06 5.153500000000e+03",
    "     5.400000000000e+03 5.960464477539e-08-1.570796326795e+00-1.192092895508e-07",
    "     7.853981852531e-01 2.505000000000e+02 6.283185307180e+00-2.340668991963e-08",
    "     2.925836239953e-09 2.500000000000e-01 2.000000000000e+00 3.000000000000e+00",
    "     1.000000000000e+00 1.000000000000e+00-7.450580596924e-09 4.000000000000e+00",
    "     0.000000000000e+00 0.000000000000e+00 0.000000000000e+00 0.000000000000e+00",
    "     4.000000000000e+00 2.348000000000e+03"};

// 800 days less three hours and ten seconds more are 114 weeks and 162010 seconds.
inline const Lines glonassOrbit = {
    "     1.234567773438D+04 1.500000000000D+00 0.000000000000D+00 1.000000000000D+00",
    "    -1.234567800000D+04-2.500000000000D+00-9.536743164062D-07-7.000000000000D+00",
    "     5.000000000000D-01 3.500000000000D+00 0.000000000000D+00 4.000000000000D+00"};
inline const std::string glonassClock = "-6.103515625000D-05 9.094947017729D-13 1.620100000000D+05";
inline const Lines glonass7 = joined({{"R07 2024 03 05 02 00 00" + glonassClock}, glonassOrbit});
inline const Lines glonass2 = joined({{"R02 2024 03 05 01 00 00" + glonassClock}, glonassOrbit});
inline const Lines glonassPastTheCount = joined({{"R02 2024 03 05 00 30 00" + glonassClock}, glonassOrbit});

// INAV has the sources 517 and FNAV 258.
inline Lines galileoRecord(const std::string& sources) {
    return {"E03 2024 03 05 02 00 00" + clockValues,
            anomaly,
            shape,
            node7200,
            inclination,
            "     2.925836239953D-09 " + sources + " 1.324000000000D+03 0.000000000000D+00",
            "     9.999999776483D-03 1.000000000000D+00 9.313225746155D-10-1.862645149231D-09",
            "     7.190000000000D+03"};
}
inline const Lines galileoInav = galileoRecord("5.170000000000D+02");
inline const Lines galileoFnav = galileoRecord("2.580000000000D+02");

inline const Lines beidouD1 = {
    "C06 2024 03 05 01 00 00" + clockValues,
    "     5.000000000000D+00-6.425000000000D+01 1.170334495981D-08 3.141592653590D+00",
    shape,
    node3600,
    inclination,
    "     2.925836239953D-09 0.000000000000D+00 3.000000000000D+02 0.000000000000D+00",
    "     2.000000000000D+00 1.000000000000D+00-7.450580596924D-09 3.725290298462D-09",
    "     7.190000000000D+03 6.000000000000D+00"};
// The lines of a CNAV record up to the fourth orbit line.
inline Lines beidouCnavStart(const std::string& satellite, const std::string& type, const std::string& adot) {
    return {"> EPH " + satellite + " " + type,
            satellite + " 2024 03 05 02 00 00" + clockValues,
            "     " + adot + "-6.425000000000D+01 1.170334495981D-08 3.141592653590D+00",
            shape,
            node7200,
            inclination};
}
inline const Lines beidouCnv1 =
    joined({beidouCnavStart("C30", "CNV1", "5.000000000000D-01"),
            {"     2.925836239953D-09 2.500000000000D-01 0.000000000000D+00 0.000000000000D+00",
             "     1.500000000000D+00 0.000000000000D+00 1.500000000000D+00",
             "     1.500000000000D+00 0.000000000000D+00-7.450580596924D-09 3.725290298462D-09",
             "     2.000000000000D+00 1.000000000000D+00 0.000000000000D+00 7.700000000000D+01",
             "     7.190000000000D+03 0.000000000000D+00 0.000000000000D+00 7.800000000000D+01"}});
// With zeros for the three values that its length does not store.
inline const Lines beidouCnv2 =
    joined({beidouCnavStart("C31", "CNV2", "0.000000000000D+00"),
            {"     2.925836239953D-09 0.000000000000D+00 0.000000000000D+00 0.000000000000D+00",
             "     0.000000000000D+00 0.000000000000D+00 0.000000000000D+00",
             "     0.000000000000D+00 0.000000000000D+00-7.450580596924D-09 3.725290298462D-09",
             "     7.190000000000D+03 1.000000000000D+00 0.000000000000D+00 7.700000000000D+01",
             "     7.190000000000D+03 0.000000000000D+00 0.000000000000D+00 7.800000000000D+01"}});
inline const Lines beidouCnv3 =
    joined({beidouCnavStart("C32", "CNV3", "5.000000000000D-01"),
            {"     2.925836239953D-09 2.500000000000D-01 0.000000000000D+00 0.000000000000D+00",
             "     1.500000000000D+00 0.000000000000D+00 1.500000000000D+00",
             "     0.000000000000D+00 1.000000000000D+00 0.000000000000D+00 3.725290298462D-09",
             "     7.190000000000D+03"}});

inline const Lines navic4 = lnavRecord("I04 2024 03 05 02 00 00", node7200);
inline const Lines navic5 = lnavRecord("I05 2024 03 05 02 00 00", node7200);

// The time-offset and ionosphere records, with the clock of the log.
inline Lines stoRecord(const std::string& head, const std::string& names, const std::string& values) {
    return {head, "    2024 03 05 01 02 03 " + names, values};
}
inline Lines ionRecord(const std::string& head) {
    return {head, "    2024 03 05 01 02 03 1.000000000000e+00 5.000000000000e-01-2.500000000000e-01",
            "     1.250000000000e-01 9.011200000000e+04 1.638400000000e+04-6.553600000000e+04",
            "     0.000000000000e+00"};
}
inline const std::string stoValues =
    "     6.047840000000e+05-9.313225746155e-10 8.881784197001e-16 0.000000000000e+00";
inline const std::string gap(34, ' ');

inline const Lines gpsSmall =
    joined({stoRecord("> STO G   LNAV", "GPUT" + gap + "UTC(USNO)", stoValues), ionRecord("> ION G00 LNAV")});
inline const Lines glonassSmall =
    stoRecord("> STO R   FDMA", "GLGP" + gap + "UTCGAL",
              "     7.450580596924e-09-9.313225746155e-10 0.000000000000e+00 0.000000000000e+00");
// The stamp of the ionosphere is that of the first entry of the table.
inline const Lines galileoSmall = joined(
    {stoRecord("> STO E   IFNV", "GAUT" + gap + "UTCGAL",
               "     6.047840000000e+05 9.313225746155e-10 0.000000000000e+00 0.000000000000e+00"),
     {"> ION C00 IFNV", "    2024 03 05 02 00 00 6.400000000000e+01 5.000000000000e-01 0.000000000000e+00",
      "     5.000000000000e+00"}});
inline const Lines beidouSmall =
    joined({stoRecord("> STO C   D1D2", "BDUT" + gap + "UTC(NTSC)", stoValues), ionRecord("> ION C6  D1D2")});
inline const Lines navicSmall =
    joined({stoRecord("> STO I   LNAV", "IRUT" + gap + "UTCIRN", stoValues), ionRecord("> ION I00 LNAV")});

inline const Lines eph5 = joined({{"> EPH G05 LNAV"}, plain(gps5)});
inline const Lines eph9 = joined({{"> EPH G09 LNAV"}, plain(gps9)});
inline const Lines ephR2 = joined({{"> EPH R02 FDMA"}, glonass2});
inline const Lines ephR7 = joined({{"> EPH R07 FDMA"}, glonass7});
inline const Lines ephPastTheCount = joined({{"> EPH R02 FDMA"}, glonassPastTheCount});
inline const Lines ephD1 = joined({{"> EPH C06   D1"}, beidouD1});
inline const Lines ephI4 = joined({{"> EPH I04 LNAV"}, plain(navic4)});
inline const Lines ephI5 = joined({{"> EPH I05 LNAV"}, plain(navic5)});

// The body of the mixed file, with the tables sorted that are not excluded. Galileo's never is.
struct Excluded {
    bool gps = false;
    bool glonass = false;
    bool beidou = false;
    bool navic = false;
};
inline Lines mixedBody(const Excluded& excluded) {
    return joined({excluded.gps ? joined({eph9, gpsCnav, eph5}) : joined({eph5, gpsCnav, eph9}),
                   gpsSmall,
                   excluded.glonass ? joined({ephR7, ephR2}) : joined({ephR2, ephR7}),
                   ephPastTheCount,
                   glonassSmall,
                   {"> EPH E03 INAV"},
                   galileoInav,
                   {"> EPH E03 FNAV"},
                   galileoFnav,
                   galileoSmall,
                   excluded.beidou ? joined({beidouCnv1, beidouCnv2, beidouCnv3, ephD1})
                                   : joined({ephD1, beidouCnv1, beidouCnv2, beidouCnv3}),
                   beidouSmall,
                   excluded.navic ? joined({ephI5, ephI4}) : joined({ephI4, ephI5}),
                   navicSmall});
}

}  // namespace testsupport::fullNavigation
