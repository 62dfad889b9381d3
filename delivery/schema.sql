-- The schema of orv.mdb, an SQLite 3 file. The program never creates or alters a table.
--
-- Each table's key is a counter whose numbers are never given out twice. Booleans are -1 (True) and 0
-- (False). A colour is a 32-bit integer with red in the low byte. Positions and sizes keep a fraction.
--
-- Long binaries (the unchanged bytes of the user's picture files) lie apart from the rows, so that an
-- edit of a short column never rewrites a picture and a walk over rows never reads one: a table T with
-- long binaries is a view over T_rows (key and short columns) and T_long (the same key and the long
-- columns; a row there comes with the first picture). T itself can be read and written like a table.
-- The program writes to T_rows and T_long.
--
-- Relations are kept by triggers, so that they hold whatever program deletes and whatever
-- PRAGMA foreign_keys says. A reference of 0 means none yet and is sound, so none is declared.
-- No collation is declared: the file is open to every SQLite tool.

BEGIN;

-- One row a card set. Its thirteen fonts are rows of tblFont that belong to it alone.
CREATE TABLE tblSet_rows (
  SetID                       INTEGER PRIMARY KEY AUTOINCREMENT,
  SetName                     TEXT,
  LanguageID                  INTEGER,
  EditionID                   INTEGER,
  DefaultCardTypeID           INTEGER,
  DefaultCardBackID           INTEGER,
  ArtistColour                INTEGER,
  PicFormatID                 INTEGER,
  Autonumber                  INTEGER NOT NULL DEFAULT 0,
  UseSymbol                   INTEGER NOT NULL DEFAULT 0,
  SaveTo                      TEXT,
  FilenamePrefix              TEXT,
  FileCardNr                  INTEGER NOT NULL DEFAULT 0,
  NoBack                      INTEGER NOT NULL DEFAULT 0,
  ReplaceSpace                INTEGER NOT NULL DEFAULT 0,
  CardTypeFontID              INTEGER,
  CardNumberFontID            INTEGER,
  CardTitleFontID             INTEGER,
  CardBoldFontID              INTEGER,
  CardInformationFontID       INTEGER,
  AutonumberFontID            INTEGER,
  CardLargeTitleFontID        INTEGER,
  CardLargeInfoFontID         INTEGER,
  CharacterNameFontID         INTEGER,
  CharacterSpecialTitleFontID INTEGER,
  CharacterSpecialFontID      INTEGER,
  CharacterInfoFontID         INTEGER,
  CharacterPieceFontID        INTEGER
);

CREATE TABLE tblSet_long (
  SetID  INTEGER PRIMARY KEY,
  Symbol BLOB
);

CREATE VIEW tblSet (
    SetID, SetName, LanguageID, EditionID, DefaultCardTypeID, DefaultCardBackID, ArtistColour, PicFormatID,
    Autonumber, UseSymbol, Symbol, SaveTo, FilenamePrefix, FileCardNr, NoBack, ReplaceSpace, CardTypeFontID,
    CardNumberFontID, CardTitleFontID, CardBoldFontID, CardInformationFontID, AutonumberFontID,
    CardLargeTitleFontID, CardLargeInfoFontID, CharacterNameFontID, CharacterSpecialTitleFontID,
    CharacterSpecialFontID, CharacterInfoFontID, CharacterPieceFontID
) AS SELECT
    r.SetID, r.SetName, r.LanguageID, r.EditionID, r.DefaultCardTypeID, r.DefaultCardBackID, r.ArtistColour,
    r.PicFormatID, r.Autonumber, r.UseSymbol, l.Symbol, r.SaveTo, r.FilenamePrefix, r.FileCardNr, r.NoBack,
    r.ReplaceSpace, r.CardTypeFontID, r.CardNumberFontID, r.CardTitleFontID, r.CardBoldFontID,
    r.CardInformationFontID, r.AutonumberFontID, r.CardLargeTitleFontID, r.CardLargeInfoFontID,
    r.CharacterNameFontID, r.CharacterSpecialTitleFontID, r.CharacterSpecialFontID, r.CharacterInfoFontID,
    r.CharacterPieceFontID
  FROM tblSet_rows AS r LEFT JOIN tblSet_long AS l ON l.SetID = r.SetID;

CREATE TRIGGER tblSet_insert INSTEAD OF INSERT ON tblSet BEGIN
  INSERT INTO tblSet_rows (
    SetID, SetName, LanguageID, EditionID, DefaultCardTypeID, DefaultCardBackID, ArtistColour, PicFormatID,
    Autonumber, UseSymbol, SaveTo, FilenamePrefix, FileCardNr, NoBack, ReplaceSpace, CardTypeFontID,
    CardNumberFontID, CardTitleFontID, CardBoldFontID, CardInformationFontID, AutonumberFontID,
    CardLargeTitleFontID, CardLargeInfoFontID, CharacterNameFontID, CharacterSpecialTitleFontID,
    CharacterSpecialFontID, CharacterInfoFontID, CharacterPieceFontID)
  VALUES (
    NEW.SetID, NEW.SetName, NEW.LanguageID, NEW.EditionID, NEW.DefaultCardTypeID, NEW.DefaultCardBackID,
    NEW.ArtistColour, NEW.PicFormatID, IFNULL(NEW.Autonumber, 0), IFNULL(NEW.UseSymbol, 0), NEW.SaveTo,
    NEW.FilenamePrefix, IFNULL(NEW.FileCardNr, 0), IFNULL(NEW.NoBack, 0), IFNULL(NEW.ReplaceSpace, 0),
    NEW.CardTypeFontID, NEW.CardNumberFontID, NEW.CardTitleFontID, NEW.CardBoldFontID,
    NEW.CardInformationFontID, NEW.AutonumberFontID, NEW.CardLargeTitleFontID, NEW.CardLargeInfoFontID,
    NEW.CharacterNameFontID, NEW.CharacterSpecialTitleFontID, NEW.CharacterSpecialFontID,
    NEW.CharacterInfoFontID, NEW.CharacterPieceFontID);
  INSERT INTO tblSet_long (SetID, Symbol)
  SELECT last_insert_rowid(), NEW.Symbol
  WHERE NEW.Symbol IS NOT NULL;
END;

CREATE TRIGGER tblSet_update INSTEAD OF UPDATE OF
    SetName, LanguageID, EditionID, DefaultCardTypeID, DefaultCardBackID, ArtistColour, PicFormatID,
    Autonumber, UseSymbol, SaveTo, FilenamePrefix, FileCardNr, NoBack, ReplaceSpace, CardTypeFontID,
    CardNumberFontID, CardTitleFontID, CardBoldFontID, CardInformationFontID, AutonumberFontID,
    CardLargeTitleFontID, CardLargeInfoFontID, CharacterNameFontID, CharacterSpecialTitleFontID,
    CharacterSpecialFontID, CharacterInfoFontID, CharacterPieceFontID
  ON tblSet BEGIN
  UPDATE tblSet_rows SET
    SetName = NEW.SetName, LanguageID = NEW.LanguageID, EditionID = NEW.EditionID,
    DefaultCardTypeID = NEW.DefaultCardTypeID, DefaultCardBackID = NEW.DefaultCardBackID,
    ArtistColour = NEW.ArtistColour, PicFormatID = NEW.PicFormatID, Autonumber = IFNULL(NEW.Autonumber, 0),
    UseSymbol = IFNULL(NEW.UseSymbol, 0), SaveTo = NEW.SaveTo, FilenamePrefix = NEW.FilenamePrefix,
    FileCardNr = IFNULL(NEW.FileCardNr, 0), NoBack = IFNULL(NEW.NoBack, 0),
    ReplaceSpace = IFNULL(NEW.ReplaceSpace, 0), CardTypeFontID = NEW.CardTypeFontID,
    CardNumberFontID = NEW.CardNumberFontID, CardTitleFontID = NEW.CardTitleFontID,
    CardBoldFontID = NEW.CardBoldFontID, CardInformationFontID = NEW.CardInformationFontID,
    AutonumberFontID = NEW.AutonumberFontID, CardLargeTitleFontID = NEW.CardLargeTitleFontID,
    CardLargeInfoFontID = NEW.CardLargeInfoFontID, CharacterNameFontID = NEW.CharacterNameFontID,
    CharacterSpecialTitleFontID = NEW.CharacterSpecialTitleFontID,
    CharacterSpecialFontID = NEW.CharacterSpecialFontID, CharacterInfoFontID = NEW.CharacterInfoFontID,
    CharacterPieceFontID = NEW.CharacterPieceFontID
  WHERE SetID = OLD.SetID;
END;

CREATE TRIGGER tblSet_updateLong INSTEAD OF UPDATE OF Symbol ON tblSet BEGIN
  INSERT INTO tblSet_long (SetID, Symbol)
  VALUES (OLD.SetID, NEW.Symbol)
  ON CONFLICT (SetID) DO UPDATE SET
    Symbol = excluded.Symbol;
END;

CREATE TRIGGER tblSet_delete INSTEAD OF DELETE ON tblSet BEGIN
  DELETE FROM tblSet_rows WHERE SetID = OLD.SetID;
END;

-- A deleted set takes its cards, characters, large cards and fonts along.
CREATE TRIGGER tblSet_deleted AFTER DELETE ON tblSet_rows BEGIN
  DELETE FROM tblSet_long WHERE SetID = OLD.SetID;
  DELETE FROM tblCard_rows WHERE SetID = OLD.SetID;
  DELETE FROM tblCharacter_rows WHERE SetID = OLD.SetID;
  DELETE FROM tblLargeCard_rows WHERE SetID = OLD.SetID;
  DELETE FROM tblFont WHERE FontID IN (
    OLD.CardTypeFontID, OLD.CardNumberFontID, OLD.CardTitleFontID, OLD.CardBoldFontID,
    OLD.CardInformationFontID, OLD.AutonumberFontID, OLD.CardLargeTitleFontID, OLD.CardLargeInfoFontID,
    OLD.CharacterNameFontID, OLD.CharacterSpecialTitleFontID, OLD.CharacterSpecialFontID,
    OLD.CharacterInfoFontID, OLD.CharacterPieceFontID);
END;

-- One row a card of a set.
CREATE TABLE tblCard_rows (
  CardID      INTEGER PRIMARY KEY AUTOINCREMENT,
  SetID       INTEGER,
  Nr          INTEGER,
  Title       TEXT,
  Copies      INTEGER,
  CardTypeID  INTEGER,
  Number      TEXT,
  OneLine     INTEGER NOT NULL DEFAULT 0,
  UsePicture  INTEGER NOT NULL DEFAULT 0,
  PicTop      REAL,
  PicLeft     REAL,
  PicHeight   REAL,
  Resize      INTEGER NOT NULL DEFAULT 0,
  UseFrame    INTEGER NOT NULL DEFAULT 0,
  Artist      TEXT,
  BoldText    TEXT,
  Information TEXT,
  CardBackID  INTEGER,
  BGColour    INTEGER,
  FileName    TEXT
);

CREATE TABLE tblCard_long (
  CardID     INTEGER PRIMARY KEY,
  Picture    BLOB,
  Background BLOB
);

CREATE INDEX tblCard_bySet ON tblCard_rows (SetID, Nr);
-- For the tests whether a type or a back is in use.
CREATE INDEX tblCard_byType ON tblCard_rows (CardTypeID);
CREATE INDEX tblCard_byBack ON tblCard_rows (CardBackID);

CREATE VIEW tblCard (
    CardID, SetID, Nr, Title, Copies, CardTypeID, Number, OneLine, UsePicture, Picture, PicTop, PicLeft,
    PicHeight, Resize, UseFrame, Artist, BoldText, Information, CardBackID, BGColour, Background, FileName
) AS SELECT
    r.CardID, r.SetID, r.Nr, r.Title, r.Copies, r.CardTypeID, r.Number, r.OneLine, r.UsePicture, l.Picture,
    r.PicTop, r.PicLeft, r.PicHeight, r.Resize, r.UseFrame, r.Artist, r.BoldText, r.Information,
    r.CardBackID, r.BGColour, l.Background, r.FileName
  FROM tblCard_rows AS r LEFT JOIN tblCard_long AS l ON l.CardID = r.CardID;

CREATE TRIGGER tblCard_insert INSTEAD OF INSERT ON tblCard BEGIN
  INSERT INTO tblCard_rows (
    CardID, SetID, Nr, Title, Copies, CardTypeID, Number, OneLine, UsePicture, PicTop, PicLeft, PicHeight,
    Resize, UseFrame, Artist, BoldText, Information, CardBackID, BGColour, FileName)
  VALUES (
    NEW.CardID, NEW.SetID, NEW.Nr, NEW.Title, NEW.Copies, NEW.CardTypeID, NEW.Number,
    IFNULL(NEW.OneLine, 0), IFNULL(NEW.UsePicture, 0), NEW.PicTop, NEW.PicLeft, NEW.PicHeight,
    IFNULL(NEW.Resize, 0), IFNULL(NEW.UseFrame, 0), NEW.Artist, NEW.BoldText, NEW.Information,
    NEW.CardBackID, NEW.BGColour, NEW.FileName);
  INSERT INTO tblCard_long (CardID, Picture, Background)
  SELECT last_insert_rowid(), NEW.Picture, NEW.Background
  WHERE NEW.Picture IS NOT NULL OR NEW.Background IS NOT NULL;
END;

CREATE TRIGGER tblCard_update INSTEAD OF UPDATE OF
    SetID, Nr, Title, Copies, CardTypeID, Number, OneLine, UsePicture, PicTop, PicLeft, PicHeight, Resize,
    UseFrame, Artist, BoldText, Information, CardBackID, BGColour, FileName
  ON tblCard BEGIN
  UPDATE tblCard_rows SET
    SetID = NEW.SetID, Nr = NEW.Nr, Title = NEW.Title, Copies = NEW.Copies, CardTypeID = NEW.CardTypeID,
    Number = NEW.Number, OneLine = IFNULL(NEW.OneLine, 0), UsePicture = IFNULL(NEW.UsePicture, 0),
    PicTop = NEW.PicTop, PicLeft = NEW.PicLeft, PicHeight = NEW.PicHeight, Resize = IFNULL(NEW.Resize, 0),
    UseFrame = IFNULL(NEW.UseFrame, 0), Artist = NEW.Artist, BoldText = NEW.BoldText,
    Information = NEW.Information, CardBackID = NEW.CardBackID, BGColour = NEW.BGColour,
    FileName = NEW.FileName
  WHERE CardID = OLD.CardID;
END;

CREATE TRIGGER tblCard_updateLong INSTEAD OF UPDATE OF Picture, Background ON tblCard BEGIN
  INSERT INTO tblCard_long (CardID, Picture, Background)
  VALUES (OLD.CardID, NEW.Picture, NEW.Background)
  ON CONFLICT (CardID) DO UPDATE SET
    Picture = excluded.Picture, Background = excluded.Background;
END;

CREATE TRIGGER tblCard_delete INSTEAD OF DELETE ON tblCard BEGIN
  DELETE FROM tblCard_rows WHERE CardID = OLD.CardID;
END;

CREATE TRIGGER tblCard_deleted AFTER DELETE ON tblCard_rows BEGIN
  DELETE FROM tblCard_long WHERE CardID = OLD.CardID;
END;

-- One row a character of a set, with its playing piece.
CREATE TABLE tblCharacter_rows (
  CharacterID     INTEGER PRIMARY KEY AUTOINCREMENT,
  SetID           INTEGER,
  Nr              INTEGER,
  Name            TEXT,
  StartingAreaID  INTEGER,
  IncludeBoard    INTEGER NOT NULL DEFAULT 0,
  AlignmentID     INTEGER,
  Strength        TEXT,
  Craft           TEXT,
  Gold            TEXT,
  Lives           TEXT,
  UsePicture      INTEGER NOT NULL DEFAULT 0,
  UseFrame        INTEGER NOT NULL DEFAULT 0,
  PicTop          REAL,
  PicLeft         REAL,
  PicHeight       REAL,
  PicWidth        REAL,
  Abilities       TEXT,
  CharacterBackID INTEGER,
  PPTop           REAL,
  PPLeft          REAL
);

CREATE TABLE tblCharacter_long (
  CharacterID  INTEGER PRIMARY KEY,
  Picture      BLOB,
  Background   BLOB,
  PlayingPiece BLOB
);

CREATE INDEX tblCharacter_bySet ON tblCharacter_rows (SetID, Nr);

CREATE VIEW tblCharacter (
    CharacterID, SetID, Nr, Name, StartingAreaID, IncludeBoard, AlignmentID, Strength, Craft, Gold, Lives,
    UsePicture, UseFrame, Picture, PicTop, PicLeft, PicHeight, PicWidth, Abilities, CharacterBackID,
    Background, PlayingPiece, PPTop, PPLeft
) AS SELECT
    r.CharacterID, r.SetID, r.Nr, r.Name, r.StartingAreaID, r.IncludeBoard, r.AlignmentID, r.Strength,
    r.Craft, r.Gold, r.Lives, r.UsePicture, r.UseFrame, l.Picture, r.PicTop, r.PicLeft, r.PicHeight,
    r.PicWidth, r.Abilities, r.CharacterBackID, l.Background, l.PlayingPiece, r.PPTop, r.PPLeft
  FROM tblCharacter_rows AS r LEFT JOIN tblCharacter_long AS l ON l.CharacterID = r.CharacterID;

CREATE TRIGGER tblCharacter_insert INSTEAD OF INSERT ON tblCharacter BEGIN
  INSERT INTO tblCharacter_rows (
    CharacterID, SetID, Nr, Name, StartingAreaID, IncludeBoard, AlignmentID, Strength, Craft, Gold, Lives,
    UsePicture, UseFrame, PicTop, PicLeft, PicHeight, PicWidth, Abilities, CharacterBackID, PPTop, PPLeft)
  VALUES (
    NEW.CharacterID, NEW.SetID, NEW.Nr, NEW.Name, NEW.StartingAreaID, IFNULL(NEW.IncludeBoard, 0),
    NEW.AlignmentID, NEW.Strength, NEW.Craft, NEW.Gold, NEW.Lives, IFNULL(NEW.UsePicture, 0),
    IFNULL(NEW.UseFrame, 0), NEW.PicTop, NEW.PicLeft, NEW.PicHeight, NEW.PicWidth, NEW.Abilities,
    NEW.CharacterBackID, NEW.PPTop, NEW.PPLeft);
  INSERT INTO tblCharacter_long (CharacterID, Picture, Background, PlayingPiece)
  SELECT last_insert_rowid(), NEW.Picture, NEW.Background, NEW.PlayingPiece
  WHERE NEW.Picture IS NOT NULL OR NEW.Background IS NOT NULL OR NEW.PlayingPiece IS NOT NULL;
END;

CREATE TRIGGER tblCharacter_update INSTEAD OF UPDATE OF
    SetID, Nr, Name, StartingAreaID, IncludeBoard, AlignmentID, Strength, Craft, Gold, Lives, UsePicture,
    UseFrame, PicTop, PicLeft, PicHeight, PicWidth, Abilities, CharacterBackID, PPTop, PPLeft
  ON tblCharacter BEGIN
  UPDATE tblCharacter_rows SET
    SetID = NEW.SetID, Nr = NEW.Nr, Name = NEW.Name, StartingAreaID = NEW.StartingAreaID,
    IncludeBoard = IFNULL(NEW.IncludeBoard, 0), AlignmentID = NEW.AlignmentID, Strength = NEW.Strength,
    Craft = NEW.Craft, Gold = NEW.Gold, Lives = NEW.Lives, UsePicture = IFNULL(NEW.UsePicture, 0),
    UseFrame = IFNULL(NEW.UseFrame, 0), PicTop = NEW.PicTop, PicLeft = NEW.PicLeft,
    PicHeight = NEW.PicHeight, PicWidth = NEW.PicWidth, Abilities = NEW.Abilities,
    CharacterBackID = NEW.CharacterBackID, PPTop = NEW.PPTop, PPLeft = NEW.PPLeft
  WHERE CharacterID = OLD.CharacterID;
END;

CREATE TRIGGER tblCharacter_updateLong INSTEAD OF UPDATE OF Picture, Background, PlayingPiece ON tblCharacter BEGIN
  INSERT INTO tblCharacter_long (CharacterID, Picture, Background, PlayingPiece)
  VALUES (OLD.CharacterID, NEW.Picture, NEW.Background, NEW.PlayingPiece)
  ON CONFLICT (CharacterID) DO UPDATE SET
    Picture = excluded.Picture, Background = excluded.Background, PlayingPiece = excluded.PlayingPiece;
END;

CREATE TRIGGER tblCharacter_delete INSTEAD OF DELETE ON tblCharacter BEGIN
  DELETE FROM tblCharacter_rows WHERE CharacterID = OLD.CharacterID;
END;

CREATE TRIGGER tblCharacter_deleted AFTER DELETE ON tblCharacter_rows BEGIN
  DELETE FROM tblCharacter_long WHERE CharacterID = OLD.CharacterID;
END;

-- One row a large card of a set. Its back is its own and comes from no catalogue.
CREATE TABLE tblLargeCard_rows (
  LargeCardID INTEGER PRIMARY KEY AUTOINCREMENT,
  SetID       INTEGER,
  Nr          INTEGER,
  Title       TEXT,
  Information TEXT,
  UsePicture  INTEGER NOT NULL DEFAULT 0,
  PicTop      REAL,
  PicLeft     REAL,
  PicWidth    REAL,
  UseFrame    INTEGER NOT NULL DEFAULT 0,
  Resize      INTEGER NOT NULL DEFAULT 0,
  BGColour    INTEGER,
  Copies      INTEGER
);

CREATE TABLE tblLargeCard_long (
  LargeCardID   INTEGER PRIMARY KEY,
  Picture       BLOB,
  BGPicture     BLOB,
  LargeCardBack BLOB
);

CREATE INDEX tblLargeCard_bySet ON tblLargeCard_rows (SetID, Nr);

CREATE VIEW tblLargeCard (
    LargeCardID, SetID, Nr, Title, Information, UsePicture, Picture, PicTop, PicLeft, PicWidth, UseFrame,
    Resize, BGColour, BGPicture, LargeCardBack, Copies
) AS SELECT
    r.LargeCardID, r.SetID, r.Nr, r.Title, r.Information, r.UsePicture, l.Picture, r.PicTop, r.PicLeft,
    r.PicWidth, r.UseFrame, r.Resize, r.BGColour, l.BGPicture, l.LargeCardBack, r.Copies
  FROM tblLargeCard_rows AS r LEFT JOIN tblLargeCard_long AS l ON l.LargeCardID = r.LargeCardID;

CREATE TRIGGER tblLargeCard_insert INSTEAD OF INSERT ON tblLargeCard BEGIN
  INSERT INTO tblLargeCard_rows (
    LargeCardID, SetID, Nr, Title, Information, UsePicture, PicTop, PicLeft, PicWidth, UseFrame, Resize,
    BGColour, Copies)
  VALUES (
    NEW.LargeCardID, NEW.SetID, NEW.Nr, NEW.Title, NEW.Information, IFNULL(NEW.UsePicture, 0), NEW.PicTop,
    NEW.PicLeft, NEW.PicWidth, IFNULL(NEW.UseFrame, 0), IFNULL(NEW.Resize, 0), NEW.BGColour, NEW.Copies);
  INSERT INTO tblLargeCard_long (LargeCardID, Picture, BGPicture, LargeCardBack)
  SELECT last_insert_rowid(), NEW.Picture, NEW.BGPicture, NEW.LargeCardBack
  WHERE NEW.Picture IS NOT NULL OR NEW.BGPicture IS NOT NULL OR NEW.LargeCardBack IS NOT NULL;
END;

CREATE TRIGGER tblLargeCard_update INSTEAD OF UPDATE OF
    SetID, Nr, Title, Information, UsePicture, PicTop, PicLeft, PicWidth, UseFrame, Resize, BGColour, Copies
  ON tblLargeCard BEGIN
  UPDATE tblLargeCard_rows SET
    SetID = NEW.SetID, Nr = NEW.Nr, Title = NEW.Title, Information = NEW.Information,
    UsePicture = IFNULL(NEW.UsePicture, 0), PicTop = NEW.PicTop, PicLeft = NEW.PicLeft,
    PicWidth = NEW.PicWidth, UseFrame = IFNULL(NEW.UseFrame, 0), Resize = IFNULL(NEW.Resize, 0),
    BGColour = NEW.BGColour, Copies = NEW.Copies
  WHERE LargeCardID = OLD.LargeCardID;
END;

CREATE TRIGGER tblLargeCard_updateLong INSTEAD OF UPDATE OF Picture, BGPicture, LargeCardBack ON tblLargeCard BEGIN
  INSERT INTO tblLargeCard_long (LargeCardID, Picture, BGPicture, LargeCardBack)
  VALUES (OLD.LargeCardID, NEW.Picture, NEW.BGPicture, NEW.LargeCardBack)
  ON CONFLICT (LargeCardID) DO UPDATE SET
    Picture = excluded.Picture, BGPicture = excluded.BGPicture, LargeCardBack = excluded.LargeCardBack;
END;

CREATE TRIGGER tblLargeCard_delete INSTEAD OF DELETE ON tblLargeCard BEGIN
  DELETE FROM tblLargeCard_rows WHERE LargeCardID = OLD.LargeCardID;
END;

CREATE TRIGGER tblLargeCard_deleted AFTER DELETE ON tblLargeCard_rows BEGIN
  DELETE FROM tblLargeCard_long WHERE LargeCardID = OLD.LargeCardID;
END;

-- Catalogue of card backs.
CREATE TABLE tblCardBack_rows (
  CardBackID INTEGER PRIMARY KEY AUTOINCREMENT,
  BackText   TEXT,
  Original   INTEGER NOT NULL DEFAULT 0,
  LanguageID INTEGER,
  EditionID  INTEGER
);

CREATE TABLE tblCardBack_long (
  CardBackID INTEGER PRIMARY KEY,
  Picture    BLOB
);

CREATE VIEW tblCardBack (
    CardBackID, BackText, Picture, Original, LanguageID, EditionID
) AS SELECT
    r.CardBackID, r.BackText, l.Picture, r.Original, r.LanguageID, r.EditionID
  FROM tblCardBack_rows AS r LEFT JOIN tblCardBack_long AS l ON l.CardBackID = r.CardBackID;

CREATE TRIGGER tblCardBack_insert INSTEAD OF INSERT ON tblCardBack BEGIN
  INSERT INTO tblCardBack_rows (
    CardBackID, BackText, Original, LanguageID, EditionID)
  VALUES (
    NEW.CardBackID, NEW.BackText, IFNULL(NEW.Original, 0), NEW.LanguageID, NEW.EditionID);
  INSERT INTO tblCardBack_long (CardBackID, Picture)
  SELECT last_insert_rowid(), NEW.Picture
  WHERE NEW.Picture IS NOT NULL;
END;

CREATE TRIGGER tblCardBack_update INSTEAD OF UPDATE OF
    BackText, Original, LanguageID, EditionID
  ON tblCardBack BEGIN
  UPDATE tblCardBack_rows SET
    BackText = NEW.BackText, Original = IFNULL(NEW.Original, 0), LanguageID = NEW.LanguageID,
    EditionID = NEW.EditionID
  WHERE CardBackID = OLD.CardBackID;
END;

CREATE TRIGGER tblCardBack_updateLong INSTEAD OF UPDATE OF Picture ON tblCardBack BEGIN
  INSERT INTO tblCardBack_long (CardBackID, Picture)
  VALUES (OLD.CardBackID, NEW.Picture)
  ON CONFLICT (CardBackID) DO UPDATE SET
    Picture = excluded.Picture;
END;

CREATE TRIGGER tblCardBack_delete INSTEAD OF DELETE ON tblCardBack BEGIN
  DELETE FROM tblCardBack_rows WHERE CardBackID = OLD.CardBackID;
END;

CREATE TRIGGER tblCardBack_deleted AFTER DELETE ON tblCardBack_rows BEGIN
  DELETE FROM tblCardBack_long WHERE CardBackID = OLD.CardBackID;
END;

-- Catalogue of character backs.
CREATE TABLE tblCharacterBack_rows (
  CharacterBackID INTEGER PRIMARY KEY AUTOINCREMENT,
  BackText        TEXT,
  Original        INTEGER NOT NULL DEFAULT 0,
  LanguageID      INTEGER,
  EditionID       INTEGER
);

CREATE TABLE tblCharacterBack_long (
  CharacterBackID INTEGER PRIMARY KEY,
  Picture         BLOB
);

CREATE VIEW tblCharacterBack (
    CharacterBackID, BackText, Picture, Original, LanguageID, EditionID
) AS SELECT
    r.CharacterBackID, r.BackText, l.Picture, r.Original, r.LanguageID, r.EditionID
  FROM tblCharacterBack_rows AS r LEFT JOIN tblCharacterBack_long AS l ON l.CharacterBackID = r.CharacterBackID;

CREATE TRIGGER tblCharacterBack_insert INSTEAD OF INSERT ON tblCharacterBack BEGIN
  INSERT INTO tblCharacterBack_rows (
    CharacterBackID, BackText, Original, LanguageID, EditionID)
  VALUES (
    NEW.CharacterBackID, NEW.BackText, IFNULL(NEW.Original, 0), NEW.LanguageID, NEW.EditionID);
  INSERT INTO tblCharacterBack_long (CharacterBackID, Picture)
  SELECT last_insert_rowid(), NEW.Picture
  WHERE NEW.Picture IS NOT NULL;
END;

CREATE TRIGGER tblCharacterBack_update INSTEAD OF UPDATE OF
    BackText, Original, LanguageID, EditionID
  ON tblCharacterBack BEGIN
  UPDATE tblCharacterBack_rows SET
    BackText = NEW.BackText, Original = IFNULL(NEW.Original, 0), LanguageID = NEW.LanguageID,
    EditionID = NEW.EditionID
  WHERE CharacterBackID = OLD.CharacterBackID;
END;

CREATE TRIGGER tblCharacterBack_updateLong INSTEAD OF UPDATE OF Picture ON tblCharacterBack BEGIN
  INSERT INTO tblCharacterBack_long (CharacterBackID, Picture)
  VALUES (OLD.CharacterBackID, NEW.Picture)
  ON CONFLICT (CharacterBackID) DO UPDATE SET
    Picture = excluded.Picture;
END;

CREATE TRIGGER tblCharacterBack_delete INSTEAD OF DELETE ON tblCharacterBack BEGIN
  DELETE FROM tblCharacterBack_rows WHERE CharacterBackID = OLD.CharacterBackID;
END;

CREATE TRIGGER tblCharacterBack_deleted AFTER DELETE ON tblCharacterBack_rows BEGIN
  DELETE FROM tblCharacterBack_long WHERE CharacterBackID = OLD.CharacterBackID;
END;

-- Fonts of the sets, thirteen rows a set.
CREATE TABLE tblFont (
  FontID INTEGER PRIMARY KEY AUTOINCREMENT,
  Font   TEXT,
  Size   INTEGER,
  Bold   INTEGER NOT NULL DEFAULT 0,
  Italic INTEGER NOT NULL DEFAULT 0,
  Colour INTEGER
);

-- Catalogue of card types. UsedInSet is 0 for a type that every set of the language and edition is offered,
-- otherwise the SetID to which the type is locked.
CREATE TABLE tblCardType (
  CardTypeID INTEGER PRIMARY KEY AUTOINCREMENT,
  UpperLeft  TEXT,
  LowerLeft  TEXT,
  UpperRight TEXT,
  LowerRight TEXT,
  Number     TEXT,
  LanguageID INTEGER,
  EditionID  INTEGER,
  Original   INTEGER NOT NULL DEFAULT 0,
  UsedInSet  INTEGER NOT NULL DEFAULT 0
);

-- Catalogue of starting areas.
CREATE TABLE tblArea (
  AreaID     INTEGER PRIMARY KEY AUTOINCREMENT,
  Board      TEXT,
  Area       TEXT,
  LanguageID INTEGER,
  EditionID  INTEGER
);

-- Catalogue of alignments, with their order within a language.
CREATE TABLE tblAlignment (
  AlignmentID INTEGER PRIMARY KEY AUTOINCREMENT,
  Alignment   TEXT,
  AlignmentNr INTEGER,
  LanguageID  INTEGER
);

-- The languages, in the order in which they are listed.
CREATE TABLE tblLanguage (
  LanguageID INTEGER PRIMARY KEY AUTOINCREMENT,
  Language   TEXT
);

-- Formats of created pictures: 1 = BMP, 2 = JPG, 3 = GIF. PicFormat is the file extension too.
CREATE TABLE tblPicFormat (
  PicFormatID INTEGER PRIMARY KEY AUTOINCREMENT,
  PicFormat   TEXT
);

COMMIT;
