#include "Tolvane/MenuSnapshot.h"

#include <string>

#include "OrvikKitCore/Preferences.h"

namespace tolvane::MenuSnapshot {

TrackSummary sampleSummary() {
    return TrackSummary{.name = std::string(sampleTitle), .artist = std::string(sampleArtist), .isPlaying = true};
}

std::optional<ArtworkImage> artworkImage(std::shared_ptr<const ArtworkImage::Content> content) {
    if (!content) return std::nullopt;
    return ArtworkImage(std::move(content));
}

std::shared_ptr<AppState> sampleState(AppServices services, std::optional<ArtworkImage> artwork) {
    auto state = AppState::create(std::make_shared<orvik::InMemoryPreferenceStore>(), true, std::move(services));
    state->applyPreview(Track{sampleSummary(), std::move(artwork)}, true, sampleKeysForwarded);
    return state;
}

}  // namespace tolvane::MenuSnapshot
