#include "Kestro/Conf/DataHelpers/HelperTables.h"

#include <utility>

#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecAac.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecAc3.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecAlac.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecAmrNB.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecDTS.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecEmpty.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecFlac.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecMp2.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecMp3.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecPCM.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecVorbis.h"
#include "Kestro/Conf/DataHelpers/AudioCodecs/DataHelperAudioCodecWmav2.h"
#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioFormatter.h"
#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioResample.h"
#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioVolume.h"
#include "Kestro/Conf/DataHelpers/Filters/DataHelperVideoResample.h"
#include "Kestro/Conf/DataHelpers/Filters/DataHelperVideoResize.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormat3gp.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAAC.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAC3.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAu.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatAvi.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatDVD.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatFlac.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatFlv.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatGif.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatImage.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatM4a.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMka.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMkv.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMov.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMp3.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMp4.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpeg1.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpeg2TS.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMpegTS.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatMxf.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatOgg.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatOgv.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatSrt.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatSubtitleText.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatSwf.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatVOB.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWav.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWebm.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWma.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatWmv.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecAV1.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecDV.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecFlv1.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecH263.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecImageBase.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecMjpeg.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecMpeg1.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecMpeg2.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecMpeg4.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecProres.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecRLE.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecTheora.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecUTVideo.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecVP8.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecVP9.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecWmv2.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecX264.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecX265.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Proc/IFilterAudioFormatter.h"
#include "Kestro/Proc/IFilterAudioVolume.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/UntilUnload.h"

namespace Kestro::Conf {

namespace {

template <class Helper, class... Arguments>
boost::intrusive_ptr<const IDataHelper> Make(Arguments&&... arguments) {
    return new Helper(std::forward<Arguments>(arguments)...);
}

DataHelperTable::value_type Pcm(const std::string& codecId) {
    return {codecId, Make<DataHelperAudioCodecPCM>(codecId)};
}

DataHelperTable::value_type Image(const std::string& codecId) {
    return {codecId, Make<DataHelperVideoCodecImageBase>(codecId)};
}

DataHelperTable::value_type ImageFile(const std::string& container, const std::string& codecId) {
    return {container, Make<DataHelperFormatImage>(container, codecId)};
}

DataHelperTable::value_type SubtitleFile(const std::string& container, const std::string& codecId) {
    return {container, Make<DataHelperFormatSubtitleText>(container, codecId)};
}

}  // namespace

const DataHelperTable& AudioCodecs() {
    static const auto& table = UntilUnload(DataHelperTable{
        {IFormatCodec::CODEC_ID_AUTO, Make<DataHelperAudioCodecEmpty>()},
        {IFormatCodecAudio::CODEC_ID_AAC, Make<DataHelperAudioCodecAac>()},
        {IFormatCodecAudio::CODEC_ID_AC3, Make<DataHelperAudioCodecAc3>()},
        {IFormatCodecAudio::CODEC_ID_DTS, Make<DataHelperAudioCodecDTS>()},
        {IFormatCodecAudio::CODEC_ID_MP3, Make<DataHelperAudioCodecMp3>()},
        {IFormatCodecAudio::CODEC_ID_FLAC, Make<DataHelperAudioCodecFlac>()},
        {IFormatCodecAudio::CODEC_ID_ALAC, Make<DataHelperAudioCodecAlac>()},
        {IFormatCodecAudio::CODEC_ID_AMR_NB, Make<DataHelperAudioCodecAmrNB>()},
        {IFormatCodecAudio::CODEC_ID_WMAV2, Make<DataHelperAudioCodecWmav2>()},
        {IFormatCodecAudio::CODEC_ID_MP2, Make<DataHelperAudioCodecMp2>()},
        {IFormatCodecAudio::CODEC_ID_VORBIS, Make<DataHelperAudioCodecVorbis>()},
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_U16BE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_U16LE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_U24BE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_U24LE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_U8),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_U32BE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_U32LE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_S16BE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_S16LE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_S24BE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_S24LE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_S8),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_S32BE),
        Pcm(IFormatCodecAudio::CODEC_ID_PCM_S32LE),
    });
    return table;
}

/// Without CODEC_ID_WMV3, which FFmpeg cannot encode.
const DataHelperTable& VideoCodecs() {
    static const auto& table = UntilUnload(DataHelperTable{
        {IFormatCodecVideo::CODEC_ID_H264, Make<DataHelperVideoCodecX264>()},
        {IFormatCodecVideo::CODEC_ID_MPEG4, Make<DataHelperVideoCodecMpeg4>()},
        {IFormatCodecVideo::CODEC_ID_MPEG1VIDEO, Make<DataHelperVideoCodecMpeg1>()},
        {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, Make<DataHelperVideoCodecMpeg2>()},
        {IFormatCodecVideo::CODEC_ID_THEORA, Make<DataHelperVideoCodecTheora>()},
        {IFormatCodecVideo::CODEC_ID_VP8, Make<DataHelperVideoCodecVP8>()},
        {IFormatCodecVideo::CODEC_ID_H263, Make<DataHelperVideoCodecH263>()},
        {IFormatCodecVideo::CODEC_ID_PRORES, Make<DataHelperVideoCodecProres>()},
        {IFormatCodecVideo::CODEC_ID_QTRLE, Make<DataHelperVideoCodecRLE>()},
        {IFormatCodecVideo::CODEC_ID_WMV2, Make<DataHelperVideoCodecWmv2>()},
        {IFormatCodecVideo::CODEC_ID_FLV1, Make<DataHelperVideoCodecFlv1>()},
        {IFormatCodecVideo::CODEC_ID_MJPEG, Make<DataHelperVideoCodecMjpeg>()},
        Image(IFormatCodecVideo::CODEC_ID_BMP),
        Image(IFormatCodecVideo::CODEC_ID_GIF),
        Image(IFormatCodecVideo::CODEC_ID_PNG),
        Image(IFormatCodecVideo::CODEC_ID_APNG),
        Image(IFormatCodecVideo::CODEC_ID_TIFF),
        Image(IFormatCodecVideo::CODEC_ID_DPX),
        Image(IFormatCodecVideo::CODEC_ID_JPEG2000),
        Image(IFormatCodecVideo::CODEC_ID_PBM),
        Image(IFormatCodecVideo::CODEC_ID_PCX),
        Image(IFormatCodecVideo::CODEC_ID_PGM),
        Image(IFormatCodecVideo::CODEC_ID_PPM),
        Image(IFormatCodecVideo::CODEC_ID_TARGA),
        Image(IFormatCodecVideo::CODEC_ID_XBM),
        Image(IFormatCodecVideo::CODEC_ID_JPEGLS),
        Image(IFormatCodecVideo::CODEC_ID_PAM),
        Image(IFormatCodecVideo::CODEC_ID_PGMYUV),
        Image(IFormatCodecVideo::CODEC_ID_SGI),
        Image(IFormatCodecVideo::CODEC_ID_XWD),
        {IFormatCodecVideo::CODEC_ID_H265, Make<DataHelperVideoCodecX265>()},
        {IFormatCodecVideo::CODEC_ID_VP9, Make<DataHelperVideoCodecVP9>()},
        {IFormatCodecVideo::CODEC_ID_DVVIDEO, Make<DataHelperVideoCodecDV>()},
        {IFormatCodecVideo::CODEC_ID_UTVIDEO, Make<DataHelperVideoCodecUTVideo>()},
        {IFormatCodecVideo::CODEC_ID_AV1, Make<DataHelperVideoCodecAV1>()},
    });
    return table;
}

const DataHelperTable& Formats() {
    static const auto& table = UntilUnload(DataHelperTable{
        {IFormatFile::FORMAT_MP4, Make<DataHelperFormatMp4>(IFormatFile::FORMAT_MP4, true)},
        {IFormatFile::FORMAT_M4V, Make<DataHelperFormatMp4>(IFormatFile::FORMAT_M4V, false)},
        {IFormatFile::FORMAT_IPOD, Make<DataHelperFormatMp4>(IFormatFile::FORMAT_IPOD, false)},
        {IFormatFile::FORMAT_M4A, Make<DataHelperFormatM4a>(IFormatFile::FORMAT_M4A)},
        {IFormatFile::FORMAT_M4B, Make<DataHelperFormatM4a>(IFormatFile::FORMAT_M4B)},
        {IFormatFile::FORMAT_M4R, Make<DataHelperFormatM4a>(IFormatFile::FORMAT_M4R)},
        {IFormatFile::FORMAT_F4A, Make<DataHelperFormatM4a>(IFormatFile::FORMAT_F4A)},
        {IFormatFile::FORMAT_MOV, Make<DataHelperFormatMov>()},
        {IFormatFile::FORMAT_MATROSKA, Make<DataHelperFormatMkv>()},
        {IFormatFile::FORMAT_MKA, Make<DataHelperFormatMka>()},
        {IFormatFile::FORMAT_MPEG, Make<DataHelperFormatMpeg1>(IFormatFile::FORMAT_MPEG)},
        {IFormatFile::FORMAT_MPEG1VIDEO, Make<DataHelperFormatMpeg1>(IFormatFile::FORMAT_MPEG1VIDEO)},
        {IFormatFile::FORMAT_MXF, Make<DataHelperFormatMxf>()},
        {IFormatFile::FORMAT_VOB, Make<DataHelperFormatVOB>(IFormatFile::FORMAT_VOB)},
        {IFormatFile::FORMAT_MPEG2VIDEO, Make<DataHelperFormatVOB>(IFormatFile::FORMAT_MPEG2VIDEO)},
        {IFormatFile::FORMAT_AVI, Make<DataHelperFormatAvi>()},
        {IFormatFile::FORMAT_DVD, Make<DataHelperFormatDVD>(IFormatFile::FORMAT_DVD)},
        {IFormatFile::FORMAT_VCD, Make<DataHelperFormatDVD>(IFormatFile::FORMAT_VCD)},
        {IFormatFile::FORMAT_SVCD, Make<DataHelperFormatDVD>(IFormatFile::FORMAT_SVCD)},
        {IFormatFile::FORMAT_FLV, Make<DataHelperFormatFlv>()},
        {IFormatFile::FORMAT_3GP, Make<DataHelperFormat3gp>(IFormatFile::FORMAT_3GP)},
        {IFormatFile::FORMAT_3G2, Make<DataHelperFormat3gp>(IFormatFile::FORMAT_3G2)},
        {IFormatFile::FORMAT_MP3, Make<DataHelperFormatMp3>()},
        {IFormatFile::FORMAT_AAC, Make<DataHelperFormatAAC>()},
        {IFormatFile::FORMAT_AC3, Make<DataHelperFormatAC3>()},
        {IFormatFile::FORMAT_AU, Make<DataHelperFormatAu>()},
        {IFormatFile::FORMAT_OGG, Make<DataHelperFormatOgg>()},
        {IFormatFile::FORMAT_FLAC, Make<DataHelperFormatFlac>()},
        {IFormatFile::FORMAT_WAV, Make<DataHelperFormatWav>(IFormatFile::FORMAT_WAV)},
        {IFormatFile::FORMAT_AIFF, Make<DataHelperFormatWav>(IFormatFile::FORMAT_AIFF)},
        {IFormatFile::FORMAT_MPEGTS, Make<DataHelperFormatMpegTS>()},
        {IFormatFile::FORMAT_MPEG2TS, Make<DataHelperFormatMpeg2TS>()},
        {IFormatFile::FORMAT_WEBM, Make<DataHelperFormatWebm>()},
        {IFormatFile::FORMAT_WMA, Make<DataHelperFormatWma>()},
        {IFormatFile::FORMAT_WMV, Make<DataHelperFormatWmv>(IFormatFile::FORMAT_WMV)},
        {IFormatFile::FORMAT_ASF, Make<DataHelperFormatWmv>(IFormatFile::FORMAT_ASF)},
        {IFormatFile::FORMAT_SWF, Make<DataHelperFormatSwf>()},
        {IFormatFile::FORMAT_OGV, Make<DataHelperFormatOgv>()},
        ImageFile(IFormatFile::FORMAT_IMAGE2, IFormatCodecVideo::CODEC_ID_MJPEG),
        ImageFile(IFormatFile::FORMAT_BMP, IFormatCodecVideo::CODEC_ID_BMP),
        ImageFile(IFormatFile::FORMAT_PNG, IFormatCodecVideo::CODEC_ID_PNG),
        ImageFile(IFormatFile::FORMAT_APNG, IFormatCodecVideo::CODEC_ID_APNG),
        ImageFile(IFormatFile::FORMAT_TIFF, IFormatCodecVideo::CODEC_ID_TIFF),
        ImageFile(IFormatFile::FORMAT_DPX, IFormatCodecVideo::CODEC_ID_DPX),
        ImageFile(IFormatFile::FORMAT_JPEG2000, IFormatCodecVideo::CODEC_ID_JPEG2000),
        ImageFile(IFormatFile::FORMAT_PBM, IFormatCodecVideo::CODEC_ID_PBM),
        ImageFile(IFormatFile::FORMAT_PCX, IFormatCodecVideo::CODEC_ID_PCX),
        ImageFile(IFormatFile::FORMAT_PGM, IFormatCodecVideo::CODEC_ID_PGM),
        ImageFile(IFormatFile::FORMAT_PPM, IFormatCodecVideo::CODEC_ID_PPM),
        ImageFile(IFormatFile::FORMAT_TARGA, IFormatCodecVideo::CODEC_ID_TARGA),
        ImageFile(IFormatFile::FORMAT_XBM, IFormatCodecVideo::CODEC_ID_XBM),
        ImageFile(IFormatFile::FORMAT_JPEGLS, IFormatCodecVideo::CODEC_ID_JPEGLS),
        ImageFile(IFormatFile::FORMAT_PAM, IFormatCodecVideo::CODEC_ID_PAM),
        ImageFile(IFormatFile::FORMAT_PGMYUV, IFormatCodecVideo::CODEC_ID_PGMYUV),
        ImageFile(IFormatFile::FORMAT_SGI, IFormatCodecVideo::CODEC_ID_SGI),
        ImageFile(IFormatFile::FORMAT_XWD, IFormatCodecVideo::CODEC_ID_XWD),
        {IFormatFile::FORMAT_GIF, Make<DataHelperFormatGif>()},
        SubtitleFile(IFormatFile::FORMAT_SSA, IFormatCodecSubtitle::CODEC_ID_SSA),
        SubtitleFile(IFormatFile::FORMAT_ASS, IFormatCodecSubtitle::CODEC_ID_ASS),
        {IFormatFile::FORMAT_SRT, Make<DataHelperFormatSrt>()},
    });
    return table;
}

const DataHelperTable& Filters() {
    static const auto& table = UntilUnload(DataHelperTable{
        {Proc::IFilterResample::CLASS_ID, Make<DataHelperAudioResample>()},
        {Proc::IFilterAudioVolume::CLASS_ID, Make<DataHelperAudioVolume>()},
        {Proc::IFilterAudioFormatter::CLASS_ID, DataHelperAudioFormatter::Create()},
        {Proc::IFilterFrameRate::CLASS_ID, Make<DataHelperVideoResample>()},
        {Proc::IFilterResize::CLASS_ID, Make<DataHelperVideoResize>()},
    });
    return table;
}

}  // namespace Kestro::Conf
