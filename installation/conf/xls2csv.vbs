' Writes the first sheet of a workbook as CSV: UTF-8, semicolons between fields, by the installed Excel.
'   xls2csv.vbs WORKBOOK TARGET
' Exit status: 0 the target is there, 1 the workbook can't be converted, 2 wrong arguments, 127 Excel isn't there.
Option Explicit

Const adTypeText = 2, adSaveCreateOverWrite = 2
Const xlDecimalSeparator = 3, xlThousandsSeparator = 4

Dim excel, book
Set excel = Nothing
Set book = Nothing

Sub Leave(status)
  On Error Resume Next
  If Not book Is Nothing Then book.Close False
  If Not excel Is Nothing Then excel.Quit
  WScript.Quit status
End Sub

' Every field in quotes, so that no separator, quote or line break in a cell is taken for one of the file.
Function Field(text)
  Field = """" & Replace(text, """", """""") & """"
End Function

' What a cell shows; "####" of a narrow column would be no value. Numbers have a point and no groups, whatever language
' this Excel speaks.
Function CellText(cell)
  CellText = cell.Text
  If Left(CellText, 2) = "##" Then CellText = CStr(cell.Value)
  If VarType(cell.Value) = vbDouble And IsNumeric(CellText) Then
    CellText = Replace(CellText, excel.International(xlThousandsSeparator), "")
    CellText = Replace(CellText, excel.International(xlDecimalSeparator), ".")
  End If
End Function

Function SheetText(sheet)
  Dim used, rows, columns, r, c, lines(), fields()
  Set used = sheet.UsedRange
  rows = used.Row + used.Rows.Count - 1
  columns = used.Column + used.Columns.Count - 1
  ReDim lines(rows - 1)
  ReDim fields(columns - 1)
  For r = 1 To rows
    For c = 1 To columns
      fields(c - 1) = Field(CellText(sheet.Cells(r, c)))
    Next
    lines(r - 1) = Join(fields, ";")
  Next
  SheetText = Join(lines, vbCrLf) & vbCrLf
End Function

Sub WriteText(path, text)
  Dim stream
  Set stream = CreateObject("ADODB.Stream")
  stream.Type = adTypeText
  stream.Charset = "utf-8"
  stream.Open
  stream.WriteText text
  stream.SaveToFile path, adSaveCreateOverWrite
  stream.Close
End Sub

If WScript.Arguments.Count <> 2 Then Leave 2

On Error Resume Next
Set excel = CreateObject("Excel.Application")
If Err.Number <> 0 Then Leave 127
excel.Visible = False
excel.DisplayAlerts = False
excel.AutomationSecurity = 3  ' no macros of the workbook
Set book = excel.Workbooks.Open(WScript.Arguments(0), 0, True)
If Err.Number <> 0 Then Leave 1
WriteText WScript.Arguments(1), SheetText(book.Worksheets(1))
If Err.Number <> 0 Then Leave 1
Leave 0
