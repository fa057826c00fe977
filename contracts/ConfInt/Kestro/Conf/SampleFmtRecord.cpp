#include "Kestro/Conf/SampleFmtRecord.h"

#include "Kestro/Conf/FindRecord.h"
#include "Kestro/Constant.h"

namespace Kestro::Conf {
namespace {

KESTRO_CONSTANT SampleFmtRecord kRecords[] = {
    {SampleFormats::U8, 8, "u8", false, SampleFormats::U8p},
    {SampleFormats::S16, 16, "s16", false, SampleFormats::S16p},
    {SampleFormats::S32, 32, "s32", false, SampleFormats::S32p},
    {SampleFormats::Flt, 32, "flt", false, SampleFormats::Fltp},
    {SampleFormats::Dbl, 64, "dbl", false, SampleFormats::Dblp},
    {SampleFormats::U8p, 8, "u8p", true, SampleFormats::U8},
    {SampleFormats::S16p, 16, "s16p", true, SampleFormats::S16},
    {SampleFormats::S32p, 32, "s32p", true, SampleFormats::S32},
    {SampleFormats::Fltp, 32, "fltp", true, SampleFormats::Flt},
    {SampleFormats::Dblp, 64, "dblp", true, SampleFormats::Dbl},
    {SampleFormats::S64, 64, "s64", false, SampleFormats::S64p},
    {SampleFormats::S64p, 64, "s64p", true, SampleFormats::S64},
};

}  // namespace

const SampleFmtRecord* SampleFmtRecord::Find(SampleFormats code) {
    return FindRecord(kRecords, [code](const SampleFmtRecord& record) { return record.code == code; });
}

const SampleFmtRecord* SampleFmtRecord::Find(const std::string& name) {
    return FindRecord(kRecords, [&name](const SampleFmtRecord& record) { return record.name == name; });
}

std::span<const SampleFmtRecord> SampleFmtRecord::All() { return kRecords; }

}  // namespace Kestro::Conf
