' Bit by bit, with Null as the unknown.
Check True And False, False
Check True Or False, True
Check 12 And 10, 8
Check 12 Or 10, 14
Check 12 Xor 10, 6
Check 12 Eqv 10, -7
Check 12 Imp 10, -5
Check Not 0, -1
Check Not 5, -6
Check Not True, False
Check Not CByte(1), CByte(254)
Check Not Empty, -1
Check Not 1.4, CLng(-2)
Check True And 5, 5
Check CByte(3) And CByte(6), CByte(2)
Check CByte(3) And True, 3
Check 70000 And 1, CLng(0)
Check "3" And 2, CLng(2)
Check "True" And True, True
Check 2.5 And 3, CLng(2)
Check Null And False, False
Check Null And 0, 0
Check Null And True, Null
Check True Or Null, True
Check Null Or 5, 5
Check False Or Null, Null
Check Null Xor True, Null
Check Null Eqv Null, Null
Check Null Imp True, True
Check False Imp Null, True
Check True Imp Null, Null
Check Not Null, Null
Check True Imp False, False
Check ErrorIn("""x"" And 1"), 13
Check ErrorIn("4294967296 And 1"), 6

' Both sides are always worked out.
Dim calls
Function Yes: calls = calls + 1: Yes = True: End Function
calls = 0
If Yes Or Yes Then Check calls, 2

' Precedence.
Check 1 + 2 * 3, 7
Check (1 + 2) * 3, 9
Check 2 * 3 ^ 2, 18.0
Check 10 - 2 - 3, 5
Check 100 / 10 / 2, 5.0
Check 7 \ 2 * 2, 1
Check 10 Mod 4 \ 2, 0
Check 5 + 7 Mod 4, 8
Check "a" & 1 + 2, "a3"
Check 1 & 2 = "12", True
Check Not 1 = 2, True
Check Not False And False, False
Check True Or True And False, True
Check True Xor True Or True, False
Check False Imp False Eqv False, True
Check -3 Mod 2, -1
