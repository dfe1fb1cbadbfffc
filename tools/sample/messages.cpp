#include <algorithm>

#include "sample/desk.h"
#include "sample/record.h"

namespace tolva::sample {

namespace {

/// The file's own numbers: a reminder or a letter, and whose.
enum Kind {
    listing_reminder = 1,
    prospect_reminder = 2,
    sold_reminder = 3,
    general_reminder = 4,
    listing_letter = 5,
    prospect_letter = 6,
    sold_letter = 7
};

class Messages {
  public:
    explicit Messages(Desk& desk)
        : today_(desk.today), file_(desk.open("messagedata.mdb")), rows_(file_->OpenRecordset("table")) {}

    /// Due `days` from today at a time of day; `raised` when it was on the screen already.
    void add(Kind kind, int customer, int days, int hour, int minute, const std::string& text,
             bool raised = false) {
        add(kind, customer, basic::add_days(today_, days), hour, minute, text, raised, "");
    }

    void add_letter(Kind kind, int customer, int days, const std::string& letter) {
        add(kind, customer, basic::add_days(today_, days), 8, 0, "Sent Letter", false, letter);
    }

    void add_birthday(Kind kind, const Customer& customer) {
        if (!customer.birthday)
            return;
        const basic::DateParts born = basic::parts_of(*customer.birthday);
        int year = basic::parts_of(today_).year;
        basic::Date next = birthday_in(year, born);
        if (next < today_)
            next = birthday_in(++year, born);
        add(kind, customer.id, next, 8, 0,
            "HAPPY BIRTHDAY!\r\n" + customer.name.full() + "\r\nHome: " + customer.homephone, false, "");
    }

  private:
    static basic::Date birthday_in(int year, const basic::DateParts& born) {
        return basic::make_date(year, born.month, std::min(born.day, basic::days_in_month(year, born.month)));
    }

    void add(Kind kind, int customer, basic::Date day, int hour, int minute, const std::string& text,
             bool raised, const std::string& letter) {
        basic::DateParts time; // on day zero
        time.hour = hour;
        time.minute = minute;
        Record record(*rows_);
        record.number("messageid", 1).number("messagetype", kind).number("customerid", customer);
        record.text("messagetext", text)
            .date("messagedate", day)
            .date("messagetime", basic::make_moment(time));
        record.yes("messageflag", raised).text("letterpath", letter);
        record.store();
    }

    basic::Date today_;
    std::unique_ptr<dao::Database> file_;
    std::unique_ptr<dao::Recordset> rows_;
};

} // namespace

void fill_messages(Desk& desk, const Customers& customers) {
    const auto& listings = customers.listings;
    const auto& prospects = customers.prospects;
    const auto& sold = customers.sold;
    Messages messages(desk);

    // Over and done with.
    messages.add(general_reminder, 0, -6, 9, 0, "Order new yard signs.", true);
    messages.add(prospect_reminder, prospects[5].id, -2, 13, 30,
                 "Call " + prospects[5].name.full() + " back.", true);

    // Missed yesterday, and due since shortly after midnight: these come up first.
    messages.add(general_reminder, 0, -1, 16, 0, "Pick up the keys from the sign shop.");
    messages.add(listing_reminder, listings[0].id, 0, 0, 5,
                 "The listing of " + listings[0].name.full() + " ends today.\r\nCall before noon.");
    messages.add(prospect_reminder, prospects[0].id, 0, 0, 10,
                 prospects[0].name.full() + " wants to see two houses this week.");

    // Later today.
    messages.add(general_reminder, 0, 0, 17, 30, "Bring the flyers to the open house.");
    messages.add(sold_reminder, sold[0].id, 0, 20, 0,
                 "Ask " + sold[0].name.full() + " how the move went.\r\nHome: " + sold[0].homephone);
    messages.add(general_reminder, 0, 0, 23, 45, "Set out the alarm clock: showing at 7:30 AM.");

    // Coming weeks.
    messages.add(general_reminder, 0, 1, 9, 30, "Breakfast with the mortgage people.");
    messages.add(general_reminder, 0, 7, 8, 15, "Advertisement for the weekend, till noon.");
    messages.add(prospect_reminder, prospects[3].id, 3, 18, 0,
                 "Second showing with " + prospects[3].name.full() + ".");
    messages.add(listing_reminder, listings[12].id, 12, 10, 0, "New photos of the house.");
    for (const Customer& listing : listings) {
        if (listing.expires && desk.today < *listing.expires) {
            const int days = static_cast<int>(listing.expires->days - desk.today.days);
            if (days <= 30) {
                messages.add(listing_reminder, listing.id, std::max(1, days - 7), 8, 0,
                             "The listing of " + listing.name.full() + " ends on " +
                                 basic::date_to_text(*listing.expires) + ".");
            }
        }
    }
    for (std::size_t i = 0; i < listings.size(); i += 3)
        messages.add_birthday(listing_reminder, listings[i]);
    for (std::size_t i = 0; i < prospects.size(); i += 3)
        messages.add_birthday(prospect_reminder, prospects[i]);
    for (std::size_t i = 0; i < sold.size(); i += 3)
        messages.add_birthday(sold_reminder, sold[i]);

    messages.add_letter(listing_letter, listings[2].id, 0, "Keeping in Touch.rtf");
    messages.add_letter(prospect_letter, prospects[7].id, 0, "Keeping in Touch.rtf");
    messages.add_letter(sold_letter, sold[1].id, 0, "Thank You.rtf");
    messages.add_letter(sold_letter, sold[4].id, 2, "Thank You.rtf");
    messages.add_letter(listing_letter, listings[20].id, 14, "Keeping in Touch.rtf");
    messages.add_letter(prospect_letter, prospects[11].id, 30, "Keeping in Touch.rtf");
    desk.engine.commit();
}

} // namespace tolva::sample
