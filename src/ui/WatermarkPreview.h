// The small page on the watermark tab that shows where the stamp will stand, and in what colour.
#pragma once

#include <string>

#include "ui/Form.h"

namespace tessary {

/// The colour of the stamp, as a colour text: what the field says, or the default setting where it is empty.
std::string GetPreviewColor(Form& form);

/// Paints and moves the stamp of the preview after the fields.
void DrawWatermarkPreview(Form& form);

/// Has the preview follow the fields that it shows. The form must outlive its events.
void AttachWatermarkPreview(Form& form);

}  // namespace tessary
