// What stands above the sections: the model's name, the date, the folder, a picture.
#include "actions/exports/export_frame.h"
#include "core/log.h"
#include "core/state.h"
#include "creo/ProMdl.h"
#include "creo/ProRaster.h"
#include "creo/ProSession.h"
#include "creo/ProWindow.h"
#include "os/clock.h"
#include "os/surroundings.h"
#include "reports/file_name.h"
#include "reports/sheet/sections.h"

namespace reports::sheet {
namespace {

using core::Message;

constexpr double kNameDown = 50, kRuleDown = 60, kFolderDown = 75;  // from the upper edge
constexpr double kPictureLeft = 210, kPictureDown = 190;            // from the right and the upper edge
constexpr double kPictureWidth = 160, kPictureHeight = 120;
constexpr double kGap = 10;  // between things side by side
constexpr creo::ProRasterForm kForm = {.depth = creo::ProRasterDepth::bits24Color,
                                       .width = 4,
                                       .height = 3,
                                       .dotsPerInch = 600,
                                       .type = creo::ProRasterType::jpeg};

// Another model is in the current window where none could be opened for this one.
void tellOther(int window, creo::ProMdl model) {
  const auto shown = creo::ProWindowMdlGet(window);
  if (shown && shown.value != model)
    core::logWrite(L"The picture is that of the current window, in which another model is", core::kWarning);
}

// The current window as a picture in the temporary folder, which goes with the object.
class Picture {
 public:
  explicit Picture(creo::ProMdl model) : path_(os::withBackslashes(core::pluginState().tempPath) + L"pdf_image.jpg") {
    os::files().remove(path_);
    const actions::SmallSurfacesGuard smallSurfaces;
    const auto window = creo::ProWindowCurrentGet();
    const creo::ProError result = window ? creo::ProRasterFileWrite(window.value, kForm, path_) : window.error;
    isWritten_ = result == creo::ProNoError;
    if (isWritten_) {
      tellOther(window.value, model);
      return;
    }
    core::logMsgId(Message::exportCompleted, core::kNormal, 1);
    core::logMsgPlain(Message::jpgFailed, core::kError);
  }
  ~Picture() { os::files().remove(path_); }
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;
  [[nodiscard]] const std::wstring& path() const { return path_; }
  [[nodiscard]] bool isWritten() const { return isWritten_; }

 private:
  std::wstring path_;
  bool isWritten_ = false;
};

// True: it stands there.
bool drawPicture(Page& page, creo::ProMdl model) {
  tell(L"Create Image");
  const Picture picture(model);
  core::logIndented(picture.path(), core::kNormal, 1);
  if (!picture.isWritten()) return false;
  const auto bytes = os::files().read(picture.path());
  const double x = page.document().width() - kPictureLeft, y = page.height() - kPictureDown;
  if (!bytes || !page.document().picture(bytes.value, x, y, kPictureWidth, kPictureHeight)) {
    core::logWrite(L"The picture can't be put into the sheet", core::kError);
    return false;
  }
  page.keepBelow(y);
  return true;
}

}  // namespace

void headOfSheet(const Subject& subject) {
  Page& page = subject.page;
  const double top = page.height() - kNameDown;
  const std::wstring now = os::localTime(os::clock().seconds(), "%Y-%m-%d %H:%M:%S");
  const double dateX = page.right() - page.widthOf(now, kRowSize);
  page.cut(subject.unread.read(creo::ProMdlNameGet(subject.model), kModelName), kNameSize, kMargin, top, dateX - kGap);
  page.cut(now, kRowSize, dateX, top, page.document().width());
  page.rule(page.height() - kRuleDown);
  const bool hasPicture = subject.wants(L"image") && drawPicture(page, subject.model);
  page.moveTo(page.height() - kFolderDown);
  const auto data = creo::ProMdlDataGet(subject.model);
  subject.unread.read(data, L"the model's folder");
  const double right = hasPicture ? page.document().width() - kPictureLeft - kGap : page.right();
  if (data) page.line(folderOf(data.value), kRowSize, kMargin, 0, right);
}

}  // namespace reports::sheet
