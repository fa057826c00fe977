#pragma once

#include <vector>

#include "catalogue/Page.h"

/// The pages, each made of what is known alone.
namespace App::Catalogue {

Page MatrixPage(const Knowledge& knowledge);
Page ListsPage(const Knowledge& knowledge);
Page PlanPage(const Knowledge& knowledge);
Page ContainerPage(const Container& container, const Knowledge& knowledge);
/// place: of the codec in Knowledge::codecs.
Page CodecPage(std::size_t place, const Knowledge& knowledge);
Page FilterPage(const HelperSheet& filter, const Knowledge& knowledge);
/// Only where there is a proof.
Page ProofPage(const Knowledge& knowledge);

}  // namespace App::Catalogue
