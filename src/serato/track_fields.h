#pragma once

#include "serato/serato_parser.h"
#include "serato/serato_track.h"
#include "serato/shared_texts.h"

#include <vector>

namespace tarnwick {

/// Sets the member that a field of a track's record stands for, a text at the latest when `texts`
/// are settled. A tag of no member changes nothing; of two fields with one tag the later one
/// stands.
void assignField(SeratoTrack &track, const SeratoParser::Field &field, SharedTexts &texts);

/// The track that the fields of one record describe, with a fresh identity.
SeratoTrack trackFromFields(const std::vector<SeratoParser::Field> &fields);

} // namespace tarnwick
