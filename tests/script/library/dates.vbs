' Day 0 is 1899-12-30; before it the fraction still counts forward
Check CStr(CDate(-1.25)), "12/29/1899 6:00:00 AM"
Check CStr(CDate(0)), "12:00:00 AM"
Check CStr(CDate(0.5)), "12:00:00 PM"
Check CDbl(DateSerial(100, 1, 1)), -657434.0
Check CDbl(DateSerial(9999, 12, 31)), 2958465.0
Check CStr(CDate(36526.999999)), "1/2/2000"
Check ErrorIn("CDate(2958466)"), CLng(6)

Check DateSerial(2000, 14, 0), #1/31/2001#
Check DateSerial(99, 1, 1), #1/1/1999#
Check DateSerial(29, 1, 1), #1/1/2029#
Check ErrorIn("DateSerial(10000, 1, 1)"), CLng(5)
Check TimeSerial(6, -15, 0), #5:45:00 AM#
Check TimeSerial(23, 59, 60), CDate(1)

' Texts as dates
Dim pair
For Each pair In Array("1/2/2003=1/2/2003", "13/2/2003=2/13/2003", "2003-01-02=1/2/2003", "2003/1/2=1/2/2003", _
    "5 May 2001=5/5/2001", "May 5, 2001=5/5/2001", "Dec 2001=12/1/2001", "1-Jan-99=1/1/1999", "5/2001=5/1/2001", _
    "Friday, December 31, 1999=12/31/1999", "1/2/03 4:05:06 PM=1/2/2003 4:05:06 PM", "4:05=4:05:00 AM", "16:05:07=4:05:07 PM", _
    "12 AM=12:00:00 AM", "11:30pm=11:30:00 PM", "2/29/2000=2/29/2000", "2001-05-05T10:11:12=5/5/2001 10:11:12 AM", _
    "10:00 1/2/2003=1/2/2003 10:00:00 AM", "5.12.2001=5/12/2001", "1/1/0100=1/1/100")
  Check CStr(CDate(Split(pair, "=")(0))), Split(pair, "=")(1)
Next
For Each pair In Array("", "hello", "2/30/2001", "25:00", "12:60", "13 AM", "1/", "/1/2", "1//2/2000", "1.5", "Jan", "1/2/3/4", "1/1/99999")
  Check pair & IsDate(pair), pair & "False"
Next
Check DateValue("1/2/2003 4:05"), #1/2/2003#
Check TimeValue("1/2/2003 4:05"), #4:05#
Check ErrorIn("DateValue(5)"), CLng(13)
Check ErrorIn("DateValue(Null)"), CLng(94)

Check DateAdd("m", 1, #1/31/2000#), #2/29/2000#
Check DateAdd("yyyy", 1, #2/29/2000#), #2/28/2001#
Check DateAdd("q", -1, #1/1/2000#), #10/1/1999#
Check DateAdd("ww", 2, #1/1/2000#), #1/15/2000#
Check DateAdd("s", -1, #1/1/2000#), #12/31/1999 11:59:59 PM#
Check DateAdd("h", 25, #1/1/2000 1:00#), #1/2/2000 2:00#
Check DateAdd("n", 1, #12/30/1899 23:59:30#), #12/31/1899 0:00:30#
Check IsNull(DateAdd("d", 1, Null)), True
Check ErrorIn("DateAdd(""x"", 1, #1/1/2000#)"), CLng(5)
Check ErrorIn("DateAdd(""d"", 1, #12/31/9999#)"), CLng(5)

Check DateDiff("d", #1/1/2000#, #3/1/2000#), CLng(60)
Check DateDiff("yyyy", #12/31/1999#, #1/1/2000#), CLng(1)
Check DateDiff("m", #1/31/2000#, #2/1/2000#), CLng(1)
Check DateDiff("w", #1/1/2000#, #1/8/2000#), CLng(1)
Check DateDiff("ww", #1/1/2000#, #1/2/2000#), CLng(1)
Check DateDiff("ww", #1/1/2000#, #1/2/2000#, vbMonday), CLng(0)
Check DateDiff("ww", #1/8/2000#, #1/1/2000#), CLng(-1)
Check DateDiff("h", #10:59#, #11:01#), CLng(1)
Check DateDiff("n", #11:01#, #10:59#), CLng(-2)
Check ErrorIn("DateDiff(""s"", #1/1/1800#, #1/1/2000#)"), CLng(6)

Check DatePart("ww", #1/1/2000#), 1
Check DatePart("ww", #12/31/2000#), 54
Check DatePart("ww", #1/1/2000#, vbMonday, vbFirstFourDays), 52
Check DatePart("ww", #12/30/2002#, vbMonday, vbFirstFourDays), 1
Check DatePart("ww", #1/2/2000#, vbSunday, vbFirstFullWeek), 1
Check DatePart("y", #12/31/2000#), 366
Check DatePart("q", #4/1/2000#), 2
Check Weekday(#1/1/2000#), 7
Check Weekday(#1/1/2000#, vbMonday), 6
Check IsNull(Year(Null)), True
Check Year(#1/2/2003 4:05:06#) & Month(#1/2/2003#) & Day(#1/2/2003#), "200312"
Check Hour(#4:05:06 PM#) & "." & Minute(#4:05:06#) & "." & Second(#4:05:06#), "16.5.6"
Check ErrorIn("Weekday(#1/1/2000#, 8)"), CLng(5)

Check WeekdayName(1, True, vbMonday), "Mon"
Check WeekdayName(7), "Saturday"
Check MonthName(12), "December"
Check MonthName(5, True), "May"
Check ErrorIn("MonthName(13)"), CLng(5)
Check FormatDateTime(#1/2/2003 4:05:06 PM#), "1/2/2003 4:05:06 PM"
Check FormatDateTime(#1/2/2003 4:05:06 PM#, vbLongDate), "Thursday, January 2, 2003"
Check FormatDateTime(#1/2/2003 4:05:06 PM#, vbShortDate), "1/2/2003"
Check FormatDateTime(#1/2/2003 4:05:06 PM#, vbLongTime), "4:05:06 PM"
Check FormatDateTime(#1/2/2003 9:05:06 AM#, vbShortTime), "09:05"
Check ErrorIn("FormatDateTime(#1/1/2000#, 5)"), CLng(5)
Check Now, #2/29/2024 2:05:09 PM#
Check Date + Time, Now
Check TypeName(Timer), "Single"
Check CDate("May 5"), #5/5/2024#
