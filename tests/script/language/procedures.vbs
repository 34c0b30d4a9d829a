Dim v, w, a(2), log
' By reference and by value
Sub Change(p) : p = p & "!" : End Sub
Sub Keep(ByVal p) : p = p & "!" : End Sub
v = "v" : Change v : Check v, "v!"
Keep v : Check v, "v!"
Change (v) : Check v, "v!"
Call Change(v) : Check v, "v!!"
Call Change((v)) : Check v, "v!!"
a(1) = "e" : Change a(1) : Check a(1), "e!"
Change v & "" : Check v, "v!!"
Sub Outer(p) : Change p : End Sub
Outer v : Check v, "v!!!"
Outer a(1) : Check a(1), "e!!"
Sub Swap(p, q) : Dim t : t = p : p = q : q = t : End Sub
v = 1 : w = 2 : Swap v, w : Check v & w, "21"
Sub MakeNew : Change fresh : Check fresh, "!" : End Sub
MakeNew

' A locked array keeps its shape and its copies their content.
Sub Resize(e) : ReDim Preserve dyn(9) : e = 1 : End Sub
Dim dyn() : ReDim dyn(2)
Check ErrorOf("Resize dyn(0)"), 10
Sub CopyThenWrite(e) : Dim c : c = dyn : e = "new" : Check c(0), Empty : Check dyn(0), "new" : End Sub
CopyThenWrite dyn(0)

' Functions
Function Plus(x, y)
  Plus = x + y
End Function
Check Plus(1, 2), 3
Check Plus(Plus(1, 2), 3) + 1, 7
v = Plus(-1, -2) : Check v, -3
Function NoValue : End Function
Check NoValue, Empty
Check NoValue(), Empty
Function Early(x)
  Early = "a"
  If x Then Exit Function
  Early = Early & "b"
End Function
Check Early(True) & Early(False), "aab"
Function Fact(n)
  If n <= 1 Then Fact = 1 Else Fact = n * Fact(n - 1)
End Function
Check Fact(10), CLng(3628800)
Function GiveArray : Dim r(1) : r(0) = 7 : GiveArray = r : End Function
Check GiveArray()(0), 7
Check Later(1), 2
Function Later(x) : Later = x + 1 : End Function
Sub Two(x, y) : log = x & "/" & y : End Sub
Two -1, +2 : Check log, "-1/2"
Two (1) + 1, (2) * 3 : Check log, "2/6"
Two "a" & "b", Plus(1, 2) : Check log, "ab/3"
Function IsLeftOut(x) : IsLeftOut = (VarType(x) = vbError) : End Function
Sub First(x, y) : log = IsLeftOut(x) & IsLeftOut(y) : End Sub
First , 2 : Check log, "TrueFalse"

' Names: locals, globals, and what Dim hoists
Dim g : g = "global"
Sub Shadow : Dim g : g = "local" : End Sub
Shadow : Check g, "global"
Sub UseGlobal : g = "changed" : implicit = 1 : End Sub
UseGlobal : Check g, "changed"
Check implicit, Empty
Function Hoisted : late = 3 : Hoisted = late : Dim late : End Function
Check Hoisted, 3
Function LocalArray : Dim r(2) : r(1) = 5 : LocalArray = r(1) & UBound(r) : End Function
Check LocalArray & LocalArray, "5252"
Const kTen = 10, kMinus = -1.5, kText = "t"
Check kTen + kMinus, 8.5
Function LocalConst : Const kTen = 11 : LocalConst = kTen : End Function
Check LocalConst, 11
Check ErrorOf("kTen = 1"), 501
Check ErrorOf("Plus = 1"), 501
Check ErrorOf("Change"), 450
Check ErrorOf("Change 1, 2"), 450
Check ErrorOf("NoSuchThing 1"), 13
Check ErrorOf("y = NoSuchThing(1)"), 13
Check ErrorOf("Len 1, 2"), 450
Check NoSuchThing, Empty

' GetRef, Eval, Execute
Dim f : Set f = GetRef("Plus")
Check f(1, 2), 3
Check ErrorOf("Set f = GetRef(""nobody"")"), 5
Function SeesLocals(p)
  Dim q : q = 2
  Execute "q = q + p : fresh = q * 2 : Dim more : more = 1"
  SeesLocals = Eval("p + q") & "," & fresh & "," & Eval("more")
End Function
Check SeesLocals(1), "4,6,1"
Check Eval("fresh"), Empty
ExecuteGlobal "made = 5 : Function MadeHere : MadeHere = made : End Function"
Check MadeHere, 5
