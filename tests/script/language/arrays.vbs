Dim fixed(2, 3), dyn(), s, t, n
Check UBound(fixed) & UBound(fixed, 2) & LBound(fixed), "230"
fixed(2, 3) = "corner"
Check fixed(2, 3), "corner"
Check fixed(1.5, "3"), "corner"
Check ErrorIn("fixed(3, 0)"), 9
Check ErrorIn("fixed(0)"), 9
Check ErrorIn("fixed(-1, 0)"), 9
Check ErrorOf("fixed(0, 4) = 1"), 9
Check ErrorOf("fixed(""a"", 0) = 1"), 13
Check ErrorOf("ReDim fixed(5)"), 10
Erase fixed
Check fixed(2, 3), Empty

Check ErrorIn("UBound(dyn)"), 9
Check ErrorOf("dyn(0) = 1"), 9
ReDim dyn(1)
dyn(0) = "a" : dyn(1) = "b"
ReDim Preserve dyn(2)
Check Join(dyn, ","), "a,b,"
ReDim dyn(1, 1)
dyn(1, 0) = 7
ReDim Preserve dyn(1, 3)
Check dyn(1, 0) & UBound(dyn, 2), "73"
Check ErrorOf("ReDim Preserve dyn(2, 3)"), 9
Check ErrorOf("ReDim Preserve dyn(1)"), 9
ReDim dyn(-1)
Check UBound(dyn), -1
Check ErrorOf("ReDim dyn(-2)"), 9
Check ErrorOf("ReDim dyn(2000000000)"), 7
Check ErrorOf("ReDim dyn(100000, 100000)"), 7
Erase dyn
Check ErrorIn("UBound(dyn)"), 9
ReDim byReDim(4)
Check UBound(byReDim), CLng(4)

' Arrays are values.
s = Array(1, 2, Array(3, 4))
t = s
t(0) = "changed"
Check s(0), 1
s(2)(0) = "deep"
Check s(2)(0), "deep"
Check t(2)(0), 3
n = s(2)
n(1) = "copy"
Check s(2)(1), 4
Check ErrorOf("q = 5: q(0) = 1"), 13
Check ErrorIn("s(0)(1)"), 13
Check ErrorOf("Erase n: n = 5: Erase n"), 13
Sub Fill(p) : p(0) = "filled" : End Sub
Fill s
Check s(0), "filled"
