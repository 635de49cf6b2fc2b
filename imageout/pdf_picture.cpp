// SPDX-License-Identifier: MIT
//
// A picture as a PDF document of one page, made with the object store of `pdf/` and a record of its
// own.
#include "base/numbers.h"
#include "imageout/imageout.h"
#include "pdf/pdf.h"
#include "pdf/pdf_line.h"
#include "quorix/imageout.h"

namespace quorix {

namespace {

struct ReleaseDocument {
  void operator()(PdfDocument *document) const { release_document(document); }
};

using OwnedDocument = std::unique_ptr<PdfDocument, ReleaseDocument>;

// The picture as the document's only image. False without memory for it.
bool write_image(PdfDocument *document, const PictureSource &source) {
  const PictureArea &area = source.area;
  OwnedArray<uint8_t> pixels;
  size_t bytes = 0;
  if (has_pixels(area)) {
    pixels = read_picture(source, Samples::rgb, &bytes);
    if (pixels == nullptr) return false;
  }
  close_stream(document, StreamKind::content);
  open_image(document, header_size(area.width), header_size(area.height));
  pdf_write(document, pixels.get(), bytes);
  pixels.reset();  // what follows needs as much
  close_stream(document, StreamKind::image);
  return true;
}

// Kept: a turned picture is turned here and by the page's own rotation.
void place_image(PdfDocument *document, const PageFit &fit) {
  TextLine line;
  add(&line, "q\n1 0 0 1");
  add_coordinate(&line, fit.landscape ? fit.page_width : 0.0);
  add_coordinate(&line, 0.0);
  add(&line, " cm\n");
  if (fit.landscape) add(&line, "0 1 -1 0 0 0 cm\n");
  write_line(document, line);
  line.length = 0;
  add_coordinate(&line, fit.drawn_width);
  add(&line, " 0 0");
  add_coordinate(&line, fit.drawn_height);
  add(&line, " 0 0 cm\n/Image1 Do\nQ\n");
  write_line(document, line);
}

WriterStatus write_document(const char *name, const PictureSource &source, const PageFit &fit,
                            bool compress) {
  const OwnedDocument document(make_document());
  if (document == nullptr) return writer_no_memory;
  document->output.operation = "qqppdf";
  const PdfSettings settings = {round_to_int32(fit.page_width), round_to_int32(fit.page_height),
                                compress, false, fit.landscape};
  const PdfStatus started = start_document(document.get(), name, settings);
  if (started != pdf_done) return started == pdf_no_file ? writer_no_file : writer_no_memory;
  if (!write_image(document.get(), source)) return writer_no_memory;
  open_content(document.get());
  place_image(document.get(), fit);
  end_document(document.get());
  return writer_done;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqppdf(const char *file, const int32_t *device, const int32_t *width,
                          const int32_t *height, const int32_t *page_set, const int32_t *page_width,
                          const int32_t *page_height, const int32_t * /*margin_set*/,
                          const int32_t * /*margin_x*/, const int32_t * /*margin_y*/,
                          const int32_t *flags, int32_t *status) {
  quorix::PictureSource source;
  *status = quorix::find_source(&source, quorix::output_context, *device, *width, *height);
  if (*status != quorix::writer_done) return 0;
  const quorix::PageFit fit =
      quorix::fit_on_page(source.area, {*page_set, *page_width, *page_height});
  *status = quorix::write_document(file, source, fit, (*flags & 1) != 0);
  return 0;
}
