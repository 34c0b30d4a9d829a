' Subtypes of results, promotion on overflow, rounding.
Check 1 + 2, 3
Check 32767 + 1, 32768
Check TypeName(32767 + 1), "Long"
Check 2147483647 + 1, 2147483648.0
Check -32768 - 1, -32769
Check 200 * 200, CLng(40000)
Check 65536 * 65536, 4294967296.0
Check CByte(200) + CByte(55), CByte(255)
Check CByte(200) + CByte(100), 300
Check CByte(1) - CByte(2), -1
Check CByte(5) * 2, 10
Check True + True, -2
Check Empty + Empty, 0
Check 1.5 + 1, 2.5
Check CSng(1.5) + 1, CSng(2.5)
Check CSng(1.5) + CLng(1), 2.5
Check CCur(1.5) + 1.25, CCur(2.75)
Check CCur(1.5) * 3, CCur(4.5)
Check CCur(0.0001) * CCur(0.5), CCur(0)
Check CCur(2) * 1.5, 3.0
Check "3" + "4", "34"
Check "3" + 4, 7.0
Check Empty + "a", "a"
Check "3" * "4", 12.0
Check 7 / 2, 3.5
Check 4 / 2, 2.0
Check CSng(1) / CSng(2), CSng(0.5)
Check 1 / CSng(4), CSng(0.25)
Check CLng(1) / CSng(4), 0.25
Check 7 \ 2, 3
Check -7 \ 2, -3
Check 2.5 \ 1, CLng(2)
Check 3.5 \ 1, CLng(4)
Check 7 Mod 3, 1
Check -7 Mod 3, -1
Check 7 Mod -3, 1
Check 8.5 Mod 3, CLng(2)
Check "10" \ 3, CLng(3)
Check CByte(7) \ CByte(2), CByte(3)
Check -32768 \ -1, CLng(32768)
Check 2 ^ 3, 8.0
Check 2 ^ 3 ^ 2, 64.0
Check -2 ^ 2, -4.0
Check 2 ^ -1, 0.5
Check (-8) ^ 3, -512.0
Check 0 ^ 0, 1.0
Check -Empty, 0
Check -"5", -5.0
Check -True, 1
Check -CByte(5), -5
Check -CInt(-32768), CLng(32768)
Check - -5, 5
Check 1 - -1, 2
Check +"5" , "5"
Check Null + 1, Null
Check 1 \ Null, Null
Check -Null, Null
Check Null ^ 2, Null

' Dates count in days.
Check #1/1/2000# + 1, #1/2/2000#
Check #1/2/2000# - #1/1/2000#, 1.0
Check #1/1/2000# - 1, #12/31/1999#
Check TypeName(#1/1/2000# * 2), "Double"

' What cannot be.
Check ErrorIn("1 / 0"), 11
Check ErrorIn("0 / 0"), 6
Check ErrorIn("1 \ 0"), 11
Check ErrorIn("1 Mod 0.4"), 11
Check ErrorIn("1E308 * 10"), 6
Check ErrorIn("""a"" + 1"), 13
Check ErrorIn("1 - """""), 13
Check ErrorIn("2147483648 \ 1"), 6
Check ErrorIn("-2147483648 \ -1"), 6
Check ErrorIn("(-8) ^ 0.5"), 5
Check ErrorIn("0 ^ -1"), 11
Check ErrorIn("CCur(900000000000000) * CCur(2000)"), 6
Check ErrorIn("Array(1) + 1"), 13
Check ErrorIn("Nothing + 1"), 91
