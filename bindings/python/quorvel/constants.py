"""Published numbers that scripts pass."""

visSectionFirstComponent = 10
visSectionAction = 240
visSectionLayer = 241
visSectionUser = 242
visSectionProp = 243
visSectionHyperlink = 244
visSectionObject = 1

visRowLast = -2

visTagComponent = 137
visTagMoveTo = 138
visTagLineTo = 139
visTagArcTo = 140
visTagEllipticalArcTo = 144

visCustPropsFormat = 3
visCustPropsInvis = 6
visLayerVisible = 4

visNumber = 32
visPoints = 50
visInches = 65
visCentimeters = 69
visMillimeters = 70
visDegrees = 81
visRadians = 83

visGetGUID = 0
visGetOrMakeGUID = 1
visDeleteGUID = 2

visDeselect = 1
visSelect = 2
visSelModeSkipSuper = 256

visFitNone = 0
visFitPage = 1
visFitWidth = 2

visAutoConnectDirNone = 0
visAutoConnectDirUp = 1
visAutoConnectDirDown = 2
visAutoConnectDirLeft = 3
visAutoConnectDirRight = 4

visOpenCopy = 1
visOpenRO = 2
visOpenHidden = 64

visFixedFormatPDF = 1
visPrintAll = 0
visPrintFromTo = 1
visPrintCurrentPage = 2
