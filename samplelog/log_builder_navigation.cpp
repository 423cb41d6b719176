// The navigation messages of LogBuilder. Each writer lists the fields of its message in their order.

#include "log_builder.h"

namespace samplelog {

void LogBuilder::putKepler(const KeplerBlock& block) {
    put8(block.sv);
    put32(block.tot);
    put8(block.flags);
    putI16(block.iodc);
    putI32(block.toc);
    put8(static_cast<unsigned>(block.uraIndex));
    put8(block.health);
    putI16(block.week);
    putFloat(block.tgd);
    putFloat(block.af2);
    putFloat(block.af1);
    putFloat(block.af0);
    putI32(block.toe);
    putI16(block.iode);
    putDouble(block.sqrtA);
    putDouble(block.e);
    putDouble(block.M0);
    putDouble(block.Omega0);
    putDouble(block.i0);
    putDouble(block.omega);
    putFloat(block.deltaN);
    putFloat(block.OmegaDot);
    putFloat(block.IDOT);
    putFloat(block.Crc);
    putFloat(block.Crs);
    putFloat(block.Cuc);
    putFloat(block.Cus);
    putFloat(block.Cic);
    putFloat(block.Cis);
}

LogBuilder& LogBuilder::ge123(const KeplerBlock& body) {
    beginMessage("GE", 123);
    putKepler(body);
    endBinary();
    return *this;
}

void LogBuilder::putGpsCommon(const GpsBody& body) {
    putKepler(body.kepler);
    put8(body.navFlags);
    put32(body.cnavToe);
    put32(body.cnavTop);
    putDouble(body.adot);
    putFloat(body.deltaNDot);
    put8(body.uraiEd);
    put8(body.uraiNed0);
    put8(body.uraiNed1);
    put8(body.uraiNed2);
}

LogBuilder& LogBuilder::ge160(const GpsBody& body) {
    beginMessage("GE", 160);
    putGpsCommon(body);
    putFloat(body.iscL1cp);
    putFloat(body.iscL1cd);
    putFloat(body.af0Delta);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::ge168(const GpsBody& body) {
    beginMessage("GE", 168);
    putGpsCommon(body);
    putFloat(body.iscL1ca);
    putFloat(body.iscL2c);
    putFloat(body.iscL5i5);
    putFloat(body.iscL5q5);
    putFloat(body.af0Delta);
    endBinary();
    return *this;
}

void LogBuilder::putGlonassCommon(const GlonassBody& body) {
    put8(body.sv);
    put8(static_cast<unsigned>(body.frequency));
    putI16(body.dayNumber);
    putI32(body.tk);
    putI32(body.tb);
    put8(body.healthByte);
    put8(body.age);
    put8(body.flagsByte);
    putDouble(body.x);
    putDouble(body.y);
    putDouble(body.z);
    putFloat(body.vx);
    putFloat(body.vy);
    putFloat(body.vz);
    putFloat(body.ax);
    putFloat(body.ay);
    putFloat(body.az);
    putDouble(body.tauSys);
    putFloat(body.tauN);
    putFloat(body.gamma);
    putFloat(body.extra1);
    put8(body.extra2);
    put8(body.extra3);
    put16(body.extra4);
}

LogBuilder& LogBuilder::ne88(const GlonassBody& body) {
    beginMessage("NE", 88);
    putGlonassCommon(body);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::ne103(const GlonassBody& body, LongNeEnd end) {
    beginMessage("NE", 103);
    putGlonassCommon(body);
    put8(body.ext1);
    put32(body.ext2);
    put32(body.ext3);
    put8(body.ext4);
    put8(body.ext5);
    put8(body.ext6);
    put8(body.ext7);
    put16(body.ext8);
    endBinary();
    if (end == LongNeEnd::padded) {
        put('\n');
    }
    return *this;
}

LogBuilder& LogBuilder::en(const GalileoBody& body) {
    beginMessage("EN", 149);
    putKepler(body.kepler);
    putFloat(body.bgdE5a);
    putFloat(body.bgdE5b);
    putFloat(body.ai0);
    putFloat(body.ai1);
    putFloat(body.ai2);
    put8(body.ionFlags);
    put8(body.navFlags);
    put32(body.lastWord);
    endBinary();
    return *this;
}

void LogBuilder::putBeidouCommon(const BeidouBody& body) {
    putKepler(body.kepler);
    putFloat(body.tgd2);
    put8(body.navFlags);
    put32(body.tailWord);
}

LogBuilder& LogBuilder::cn134(const BeidouBody& body) {
    beginMessage("CN", 134);
    putBeidouCommon(body);
    put8(body.aodc);
    put8(body.aode);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::cn152(const BeidouBody& body) {
    beginMessage("CN", 152);
    putBeidouCommon(body);
    putDouble(body.adot);
    putFloat(body.deltaNDot);
    putFloat(body.sisai);
    putFloat(body.cnavWord1);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::cn160(const BeidouBody& body) {
    beginMessage("CN", 160);
    putBeidouCommon(body);
    putDouble(body.adot);
    putFloat(body.deltaNDot);
    putFloat(body.sisai);
    putFloat(body.cnavWord1);
    putFloat(body.cnavWord2);
    putFloat(body.cnavWord3);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::ie(const KeplerBlock& body) {
    beginMessage("IE", 123);
    putKepler(body);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::ionosphere(std::string_view id, const IonoBody& body) {
    beginMessage(id, 39);
    put32(body.tot);
    put8(body.unread[0]);
    put8(body.unread[1]);
    putFloat(body.alpha0);
    putFloat(body.alpha1);
    putFloat(body.alpha2);
    putFloat(body.alpha3);
    putFloat(body.beta0);
    putFloat(body.beta1);
    putFloat(body.beta2);
    putFloat(body.beta3);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::io(const IonoBody& body) {
    return ionosphere("IO", body);
}

LogBuilder& LogBuilder::ii(const IonoBody& body) {
    return ionosphere("II", body);
}

LogBuilder& LogBuilder::ci(const IonoBody& body) {
    return ionosphere("CI", body);
}

void LogBuilder::putTimeOffset(const TimeOffsetBody& body) {
    putDouble(body.a0);
    putFloat(body.a1);
    put32(body.tot);
    put16(body.week);
    put8(static_cast<unsigned>(body.leapSeconds));
    put8(body.leapWord1);
    put16(body.leapWord2);
    put8(body.leapWord3);
}

LogBuilder& LogBuilder::timeOffset(std::string_view id, const TimeOffsetBody& body) {
    beginMessage(id, 24);
    putTimeOffset(body);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::uo(const TimeOffsetBody& body) {
    return timeOffset("UO", body);
}

LogBuilder& LogBuilder::cu(const TimeOffsetBody& body) {
    return timeOffset("CU", body);
}

LogBuilder& LogBuilder::iu(const TimeOffsetBody& body) {
    return timeOffset("IU", body);
}

LogBuilder& LogBuilder::eu(const GalileoTimeOffsetBody& body) {
    beginMessage("EU", 38);
    putTimeOffset(body.utc);
    putFloat(body.a0Gps);
    putFloat(body.a1Gps);
    put32(body.totGps);
    put16(body.weekGps);
    endBinary();
    return *this;
}

LogBuilder& LogBuilder::nu(const GlonassTimeOffsetBody& body) {
    beginMessage("NU", 21);
    putDouble(body.tauC);
    putFloat(body.tauGps);
    put32(body.word1);
    put32(body.word2);
    endBinary();
    return *this;
}

}  // namespace samplelog
