#include "Tolvane/MenuSnapshot.h"

#include <string>

#include "OrvikKitCore/Preferences.h"
#include "Tolvane/MenuContent.h"
#include "Tolvane/MenuView.h"

namespace tolvane::MenuSnapshot {

TrackSummary sampleSummary() {
    return TrackSummary{.name = std::string(sampleTitle), .artist = std::string(sampleArtist), .isPlaying = true};
}

std::optional<ArtworkImage> artworkImage(std::shared_ptr<const ArtworkImage::Content> content) {
    return ArtworkImage::from(std::move(content));
}

std::shared_ptr<AppState> sampleState(AppServices services, std::optional<ArtworkImage> artwork) {
    auto state = AppState::create(std::make_shared<orvik::InMemoryPreferenceStore>(), true, std::move(services));
    state->applyPreview(Track{sampleSummary(), std::move(artwork)}, true, sampleKeysForwarded);
    return state;
}

void render(std::string_view to, Platform& platform) {
    const std::optional<ArtworkImage> artwork =
        platform.makeArtwork ? platform.makeArtwork(SampleArtwork{}) : std::nullopt;
    orvik::Snapshot::renderMenu(
        to, std::nullopt,
        [&platform, &artwork] {
            const std::shared_ptr<AppState> state = sampleState(platform.services, artwork);
            MenuContent content = menuContent(state, MenuEnvironment{.loginItem = platform.loginItem,
                                                                     .openAtLogin = nullptr,
                                                                     .urlOpener = platform.services.urlOpener,
                                                                     .version = platform.version,
                                                                     .quit = [] {}});
            return MenuView{std::move(content), orvik::ViewState{}}.body();
        },
        platform.rendering);
}

}  // namespace tolvane::MenuSnapshot
