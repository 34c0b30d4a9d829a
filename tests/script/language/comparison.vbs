' Numbers, texts, Empty and Null beside each other.
Dim five, textFive, word, nothingYet
five = 5 : textFive = "5" : word = "abc"
Check five = textFive, False
Check five < textFive, True
Check textFive > five, True
Check five = "5", True
Check 5 = textFive, True
Check "5" = 5, True
Check ErrorOf("x = ""abc"": y = (x = 5)"), 13
Check five < word, True
Check "a" < "B", False
Check "a" = "A", False
Check "abc" < "abcd", True
Check "" < "a", True
Check nothingYet = "", True
Check nothingYet = 0, True
Check nothingYet = False, True
Check nothingYet = textFive, False
Check nothingYet = Empty, True
Check True = -1, True
Check True = 1, False
Check True < False, True
Check True = "True", True
Check 0.1 + 0.2 = 0.3, False
Check CCur(0.1) + CCur(0.2) = CCur(0.3), True
Check 1 = 1.0, True
Check #1/1/2000# = 36526, True
Check #1/1/2000# < #1/1/2000 12:00#, True
Check Null = Null, Null
Check 1 < Null, Null
Check "a" <> Null, Null
Check 1 <> 2, True
Check 1 >= 1, True
Check 1 => 1, True
Check 1 =< 2, True
Check 1 < 2 = True, True
Check ErrorIn("Array(1) = 1"), 13
Check ErrorIn("Nothing = 1"), 91

' Is asks for the same object.
Dim a, b
Set a = New Thing
Set b = a
Check a Is b, True
Check a Is Nothing, False
Check Nothing Is Nothing, True
Check Not a Is Nothing, True
Set b = New Thing
Check a Is b, False
Check ErrorIn("1 Is 2"), 424
Class Thing
End Class
