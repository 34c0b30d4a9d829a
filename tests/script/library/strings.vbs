' Lengths, parts and places: in UTF-16 units, from 1
Check Len("abc"), CLng(3)
Check Len("aé" & ChrW(&HD83D) & ChrW(&HDE00)), CLng(4)
Check Len(Empty), CLng(0)
Check Len(1234), CLng(4)
Check IsNull(Len(Null)), True
Check Left("äbc", 2), "äb"
Check Right("abcé", 2), "cé"
Check Right("ab", 5), "ab"
Check Mid("äbcdé", 2, 3), "bcd"
Check Mid("abc", 3), "c"
Check Mid("abc", 9), ""
Check IsNull(Left(Null, 1)), True
Check IsNull(Mid(Null, 1)), True
Check ErrorIn("Left(""abc"", -1)"), CLng(5)
Check ErrorIn("Mid(""abc"", 0)"), CLng(5)
Check ErrorIn("Mid(""abc"", 1, -1)"), CLng(5)
Check ErrorIn("Left(""abc"", Null)"), CLng(94)
Check ErrorIn("Mid(""abc"")"), CLng(450)

Check InStr("Hello", "l"), CLng(3)
Check InStr("Hello", "L"), CLng(0)
Check InStr(1, "Hello", "L", vbTextCompare), CLng(3)
Check InStr(4, "Hello", "l"), CLng(4)
Check InStr("ééx", "x"), CLng(3)
Check InStr("abc", ""), CLng(1)
Check InStr("", ""), CLng(0)
Check InStr(4, "abc", ""), CLng(0)
Check IsNull(InStr(Null, "a")), True
Check ErrorIn("InStr(0, ""abc"", ""a"")"), CLng(5)
Check ErrorIn("InStr(Null, ""abc"", ""a"")"), CLng(94)
Check ErrorIn("InStr(1, ""abc"", ""a"", 2)"), CLng(5)
Check InStrRev("abcabc", "b"), CLng(5)
Check InStrRev("abcabc", "b", 4), CLng(2)
Check InStrRev("abcabc", "bc", 2), CLng(0)
Check InStrRev("ABC", "b", -1, vbTextCompare), CLng(2)
Check InStrRev("abc", "", 2), CLng(2)
Check InStrRev("abc", "a", 9), CLng(0)
Check ErrorIn("InStrRev(""abc"", ""a"", 0)"), CLng(5)
Check ErrorIn("InStrRev(Null, ""a"")"), CLng(94)

Check Replace("aXbxc", "x", "--"), "aXb--c"
Check Replace("aXbxc", "x", "--", 1, -1, vbTextCompare), "a--b--c"
Check Replace("abcabc", "b", "", 3), "cac"
Check Replace("ééé", "é", "e", 1, 2), "eeé"
Check Replace("abc", "", "x"), "abc"
Check Replace("abc", "b", "x", 9), ""
Check Replace("abc", "b", "x", 1, 0), "abc"
Check ErrorIn("Replace(Null, ""a"", ""b"")"), CLng(94)
Check ErrorIn("Replace(""abc"", ""a"", ""b"", 0)"), CLng(5)

Check UCase("straße é ж"), "STRAßE É Ж"
Check LCase("ÀΣЖ"), "àσж"
Check IsNull(UCase(Null)), True
Check Trim("  a b  ") & "|", "a b|"
Check LTrim("  a ") & "|", "a |"
Check RTrim(vbTab & " a  ") & "|", vbTab & " a|"
Check StrReverse("abcé"), "écba"
Check Space(3) & "|", "   |"
Check String(3, "xy"), "xxx"
Check String(2, 65), "AA"
Check String(2, "é"), "éé"
Check ErrorIn("Space(-1)"), CLng(5)
Check ErrorIn("Space(300000000)"), CLng(7)
Check ErrorIn("String(2000000000, ""ab"")"), CLng(7)
Check ErrorIn("String(3, """")"), CLng(5)
Check StrComp("a", "B"), 1
Check StrComp("a", "B", vbTextCompare), -1
Check StrComp("Ä", "ä", vbTextCompare), 0
Check IsNull(StrComp("a", Null)), True

' Characters and bytes
Check Asc("A"), 65
Check Asc("€"), 128
Check Asc("ж"), 63
Check AscW("€"), 8364
Check AscW(ChrW(65535)), -1
Check Chr(128), "€"
Check Chr(65) & ChrW(-1) & ChrW(228), "A" & ChrW(65535) & "ä"
Check ErrorIn("Asc("""")"), CLng(5)
Check ErrorIn("Chr(256)"), CLng(5)
Check ErrorIn("ChrW(65536)"), CLng(5)
Check LenB("abc"), CLng(6)
Check MidB("abc", 3, 2), "b"
Check LeftB("abc", 2) & RightB("abc", 2), "ac"
Check InStrB("abc", "b"), CLng(3)
Check AscB(ChrB(200)), 200
Check Escape("a b+é€/"), "a%20b+%E9%u20AC/"
Check Unescape("a%20b%u20ac%zz%e9%"), "a b€%zzé%"

' Lists
Check Join(Split("a,b,,c", ","), "|"), "a|b||c"
Check Join(Split("a,b,c", ",", 2), "|"), "a|b,c"
Check Join(Split("aXbxc", "x", -1, vbTextCompare), "|"), "a|b|c"
Check Join(Split("one two"), "|"), "one|two"
Check UBound(Split("")), CLng(-1)
Check UBound(Split("abc", "")), CLng(0)
Check ErrorIn("Split(Null)"), CLng(94)
Check ErrorIn("Split(""a"", ""b"", -2)"), CLng(5)
Check Join(Array(1, "b", 2.5)), "1 b 2.5"
Check ErrorIn("Join(1)"), CLng(13)
Check ErrorIn("Join(Array(1, Null))"), CLng(13)
Check Join(Filter(Array("apple", "Bob", "cab"), "b")), "Bob cab"
Check Join(Filter(Array("apple", "Bob", "cab"), "B", False, vbTextCompare)), "apple"
Dim grid(2, 5)
Check LBound(grid), CLng(0)
Check UBound(grid, 2), CLng(5)
Check ErrorIn("UBound(Array(1), 2)"), CLng(9)
Check ErrorIn("UBound(1)"), CLng(13)
