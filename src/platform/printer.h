#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "rtf/rich_text.h"

namespace tolva::platform {

/// A rectangle on paper in twips (1440 to the inch), from the corner of what the device can print on.
struct PaperRectangle {
    double left, top, right, bottom;
};

/// The one printer object that all paper goes through. A job opens with the first thing printed and ends with
/// `EndDoc`; the operations bear the names that the print routines were written for. Positions are in twips
/// from the corner of the printable area, kept in single precision. Failures are error 482, and
/// drop the job: what is printed next begins one of its own.
class Printer {
  public:
    static constexpr int portrait = 1;
    static constexpr int landscape = 2;

    virtual ~Printer() = default;

    // --- State that printing uses; it outlives jobs ---

    std::string FontName = "Arial";
    /// In points.
    float FontSize = 10;
    bool FontBold = false;
    bool FontUnderline = false;

    float CurrentX() const { return x_; }
    float CurrentY() const { return y_; }
    void set_CurrentX(double twips) { x_ = static_cast<float>(twips); }
    void set_CurrentY(double twips) {
        y_ = static_cast<float>(twips);
        flowing_ = false;
    }

    /// How pages lie, from the next page on.
    virtual void set_Orientation(int orientation) = 0;

    // --- The page ---

    /// The paper, and the part of it that can be printed on; and how far that part's corner is inside.
    virtual double Width() const = 0;
    virtual double Height() const = 0;
    virtual double ScaleWidth() const = 0;
    virtual double ScaleHeight() const = 0;
    virtual double OffsetX() const = 0;
    virtual double OffsetY() const = 0;

    // --- Printing ---

    /// Called when a job has gone: what is stored by then is made durable.
    std::function<void()> job_ended;

    /// The name under which the next job stands in the queue.
    std::string job_name = "TOLVA";

    /// Writes at the current position and goes to the next line at the left edge. A line end in the text does
    /// the same. Where lines have run down to the end of the page the next one begins a new page; a position
    /// that was set is kept, wherever it is.
    void Print(const std::string& text);
    /// Writes and stays behind the text.
    void Print_on(const std::string& text);

    virtual void Line(double x1, double y1, double x2, double y2) = 0;

    /// Sets the text from character `start` into the rectangle of the current page, by the printer's own
    /// metrics, and returns the first character that found no place: the text's length where nothing is left.
    /// What it returned is where the next page starts.
    virtual std::size_t set_rich_text(const rtf::RichText& text, const PaperRectangle& where,
                                      std::size_t start) = 0;

    void NewPage();
    /// Ends the job and sends it. Without a job there is nothing to end.
    void EndDoc();
    /// Gives up the job: what is printed next begins one of its own. Without a job there is nothing to give
    /// up.
    void KillDoc();

  protected:
    /// Puts a line of text on the page, its top left at the current position, opening a job if none is open;
    /// returns its width.
    virtual float write(const std::string& text) = 0;
    virtual float line_height() const = 0;
    /// Ends the page under way, opening a job if none is open, and begins the next.
    virtual void begin_page() = 0;
    virtual void end_job() = 0;
    virtual void drop_job() = 0;

  private:
    void go_to_top();
    void next_line();

    float x_ = 0;
    float y_ = 0;
    /// The position came from printing lines, not from setting it.
    bool flowing_ = true;
};

} // namespace tolva::platform
