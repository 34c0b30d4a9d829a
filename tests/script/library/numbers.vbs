' Subtypes are kept
Check Abs(-5), 5
Check TypeName(Abs(-32767 - 1)), "Long"
Check Abs(True), 1
Check Abs("-2.5"), 2.5
Check Abs(CCur(-1.5)), CCur(1.5)
Check Abs(CLng(-2147483647) - 1), 2147483648
Check IsNull(Abs(Null)), True
Check Int(-2.5), -3.0
Check Fix(-2.5), -2.0
Check TypeName(Int(7)), "Integer"
Check Int(CCur(-1.5)), CCur(-2)
Check Fix(CCur(-1.5)), CCur(-1)
Check Int(True), -1
Check Sgn(-2.5), -1
Check ErrorIn("Sgn(Null)"), CLng(94)
Check Round(2.5), 2.0
Check Round(3.5), 4.0
Check Round(1.2345, 2), 1.23
Check Round(-0.5), 0.0
Check Round(CCur(1.25), 1), CCur(1.2)
Check ErrorIn("Round(1, -1)"), CLng(5)
Check Sqr(16), 4.0
Check ErrorIn("Sqr(-1)"), CLng(5)
Check ErrorIn("Log(0)"), CLng(5)
Check ErrorIn("Exp(1000)"), CLng(6)
Check CStr(Exp(1)), "2.71828182845905"
Check CStr(Atn(1) * 4), "3.14159265358979"
Check CStr(Sin(1) + Cos(1) + Tan(1)), "2.93918101533094"
Check Hex(-1), "FFFF"
Check Hex(-1.0), "FFFFFFFF"
Check Hex(255.5), "100"
Check Oct(64), "100"
Check Hex(Empty), "0"
Check IsNull(Hex(Null)), True
Check ErrorIn("Hex(4294967296)"), CLng(6)
Check RGB(255, 300, 1), CLng(131071)
Check ErrorIn("RGB(-1, 0, 0)"), CLng(5)

' The one sequence of Rnd
Rnd -1
Check Rnd(0), CSng(0.224007)
Check CStr(Rnd(-1)), "0.224007"
Check CStr(Rnd), "3.584582E-02"
Rnd -1 : Randomize 42
Dim first : first = Rnd
Rnd -1 : Randomize 42
Check Rnd, first

' Texts as numbers
Check CDbl(" 1,234.5 "), 1234.5
Check CDbl("(5)"), -5.0
Check CDbl("-$5.5"), -5.5
Check CDbl("5-"), -5.0
Check CDbl("1d-2"), 0.01
Check CLng("&HFFFF"), CLng(-1)
Check CLng("&HFFFF&"), CLng(65535)
Check CInt("&O17"), 15
Dim text
For Each text In Array("", ".", "1 2", "--1", "(-5)", "(5", "1e", "1.2.3", "abc", "&H", "&O8", "$", "1,5.5,5x")
  Check text & IsNumeric(text), text & "False"
Next
Check ErrorIn("CDbl(""1e400"")"), CLng(6)
Check CCur("922337203685477.5807"), CCur("922337203685477.5807")
Check CStr(CCur("-1.23455")), "-1.2346"
Check ErrorIn("CCur(""922337203685477.5808"")"), CLng(6)
Check CByte(True), CByte(255)
Check ErrorIn("CByte(256)"), CLng(6)
Check ErrorIn("CInt(""x"")"), CLng(13)
Check ErrorIn("CInt(Null)"), CLng(94)

' Numbers as texts
Check CStr(1E15) & " " & CStr(123456789012345), "1E+15 123456789012345"
Check CStr(0.00001) & " " & CStr(1E-15) & " " & CStr(1.5E-15), "0.00001 0.000000000000001 1.5E-15"
Check CStr(1/30) & " " & CStr(CSng(0.015625)) & " " & CStr(CSng(1E7)), "3.33333333333333E-02 0.015625 1E+07"
Check CStr(-123.25) & " " & CStr(100) & " " & CStr(1E14), "-123.25 100 100000000000000"
Check CStr(1/3) & " " & CStr(CSng(1/3)), "0.333333333333333 0.3333333"
Check FormatNumber(1234567.891), "1,234,567.89"
Check FormatNumber(1.005, 2), "1.01"
Check FormatNumber(999.995), "1,000.00"
Check FormatNumber(-0.001), "0.00"
Check FormatNumber(0.5, 2, False), ".50"
Check FormatNumber(-5, , , True), "(5.00)"
Check FormatNumber(123456789, 0, , , False), "123456789"
Check FormatNumber(1E20, 1), "100,000,000,000,000,000,000.0"
Check FormatCurrency(-1234.5), "($1,234.50)"
Check FormatPercent(0.12345, 1), "12.3%"
Check ErrorIn("FormatNumber(""x"")"), CLng(13)
Check ErrorIn("FormatNumber(1, -2)"), CLng(5)
Check ErrorIn("FormatNumber(1, 2, 5)"), CLng(5)
