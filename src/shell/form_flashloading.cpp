#include "shell/form_flashloading.h"

#include <QVBoxLayout>

#include "platform/program_file.h"
#include "shell/movie_player.h"

namespace shell {

FormFlashLoading::FormFlashLoading(platform::ShellServices& shell, MovieOpener& movies) {
    setObjectName("form_flashloading");
    setWindowTitle("Accessing Data");
    // Who works with the keys stays where they are.
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto* flashLoading = new MoviePlayer(movies, this);
    flashLoading->setObjectName("flashLoading");
    flashLoading->setAccessibleName("The archive is being read");
    flashLoading->setMinimumSize(flashLoading->sizeHint() / 2);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(flashLoading);
    flashLoading->setMovie(platform::programFile(shell, {"settings", "accessdata.swf"}));
    resize(minimumSizeHint());
}

}  // namespace shell
