#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <string>

namespace Kestro::Planner {

/// Whether films have such a rate: from a picture an hour to those of the fastest cameras that players follow. Others
/// come from damaged or hostile files and settings, and a conversion to or from them has no end. 0 stands for none.
bool IsFrameRate(const boost::rational<int64_t>& rate);

/// The range, for people.
std::string FrameRateRange();

/// Throws NotAcceptable (ValueNotAccepted) for the planned rate of a stream, and for an input's that is too slow: each
/// of its pictures would be repeated until the next. path: of the setting of that rate.
void CheckFrameRates(const std::string& path, const boost::rational<int64_t>& input,
                     const boost::rational<int64_t>& planned);

}  // namespace Kestro::Planner
