// The calendar behind dates kept as days since 1899-12-30: years 100 to 9999, proleptic Gregorian.
//
// The fraction is the time of day and counts forward from midnight for negative dates as well:
// -1.25 is 1899-12-29 06:00.
#pragma once

namespace zelUtilities {

struct Moment {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int weekday = 6;      // 0 is Sunday
  int dayOfYear = 364;  // from 1
  int dayNumber = 0;    // since 1899-12-30
  int secondOfDay = 0;
};

bool isDateInRange(double days);

// Rounded to the second. The date must be in range.
Moment momentOf(double days);

bool isCalendarDate(int year, int month, int day);
// Days from 1899-12-30 to this date, which must be one.
int dayNumberOf(int year, int month, int day);
// The date with its time of day in seconds.
double dateOf(int dayNumber, int secondOfDay);

// The year at present, in universal time.
int currentYear();

}  // namespace zelUtilities
