-- Tables of the inventory database that the stock verification module reads and writes.
-- Native SQLite. Dates are text "YYYY-MM-DD HH:MM:SS" in columns declared DATETIME, so that
-- the data layer gives them back as dates; text that is no number is refused by the numeric
-- columns. Text columns compare as SQL Server compares them, ignoring letter case and
-- trailing blanks (the data layer's CITEXT collation). Column order matters where the module
-- writes by position (the ledgers).

-- Company and organisation ------------------------------------------------------------------

CREATE TABLE aCurrencyMaster (
    CurrencyID INT NOT NULL PRIMARY KEY,
    CurrencyCode VARCHAR(10) COLLATE CITEXT NOT NULL,
    CurrencyName VARCHAR(50) COLLATE CITEXT NOT NULL,
    Decimals SMALLINT NOT NULL DEFAULT 2
);

CREATE TABLE aCompanyMaster (
    CompanyID INT NOT NULL PRIMARY KEY,
    name VARCHAR(100) COLLATE CITEXT NOT NULL,
    Address1 VARCHAR(100) COLLATE CITEXT,
    Address2 VARCHAR(100) COLLATE CITEXT,
    Address3 VARCHAR(100) COLLATE CITEXT,
    CurrencyID INT NOT NULL
);

CREATE TABLE aDepartmentMaster (
    DepartmentID INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    Departmentname VARCHAR(100) COLLATE CITEXT NOT NULL,
    depcurrencyid INT NOT NULL
);

CREATE TABLE acountrymaster (
    countryid INT NOT NULL PRIMARY KEY,
    CountryName VARCHAR(50) COLLATE CITEXT NOT NULL
);

CREATE TABLE acity (
    cityid INT NOT NULL PRIMARY KEY,
    CityName VARCHAR(50) COLLATE CITEXT NOT NULL,
    countryid INT NOT NULL
);

CREATE TABLE aGodown (
    GodownID INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    DepartmentId INT NOT NULL,
    GodownName VARCHAR(100) COLLATE CITEXT NOT NULL,
    Address VARCHAR(250) COLLATE CITEXT,
    GodownTelephoneNo VARCHAR(30) COLLATE CITEXT,
    GodownFaxNo VARCHAR(30) COLLATE CITEXT,
    countryid INT,
    cityid INT
);

-- Shops are the other kind of stock location; stock transfers run between godowns and shops.
CREATE TABLE aShop (
    ShopId INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    ShopName VARCHAR(100) COLLATE CITEXT NOT NULL
);

-- Bins within a godown. A location belongs to one godown: every join gives both columns.
CREATE TABLE loiLocation (
    lLocationId INT NOT NULL,
    lLocationName VARCHAR(50) COLLATE CITEXT NOT NULL,
    lGodownId INT NOT NULL,
    PRIMARY KEY (lGodownId, lLocationId)
);

CREATE TABLE aFinancialYear (
    FinancialId INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    FromDate DATETIME NOT NULL,
    ToDate DATETIME NOT NULL,
    CurFinancialYear BIT NOT NULL DEFAULT 0
);

-- Document number prefix per interface, financial year and godown.
CREATE TABLE aPrefix (
    InterfaceID INT NOT NULL,
    FinancialId INT NOT NULL,
    godownid INT NOT NULL,
    Prefix VARCHAR(10) COLLATE CITEXT,
    PRIMARY KEY (InterfaceID, FinancialId, godownid)
);

-- Days closed for posting: nothing dated on or before a godown's close date may change.
CREATE TABLE aGodownClosing (
    GodownID INT NOT NULL,
    CloseDate DATETIME NOT NULL,
    ClosedBy INT,
    ClosedOn DATETIME,
    PRIMARY KEY (GodownID, CloseDate)
);

-- Users and settings ------------------------------------------------------------------------

-- One row for each godown a user may work at.
CREATE TABLE lousers (
    userid INT NOT NULL,
    GodownID INT NOT NULL,
    username VARCHAR(50) COLLATE CITEXT NOT NULL,
    Designation VARCHAR(50) COLLATE CITEXT,
    Active BIT NOT NULL DEFAULT 1,
    PRIMARY KEY (userid, GodownID)
);

-- Function letters of a user in one interface: N new, E edit, D delete, P print.
CREATE TABLE louserrights (
    userid INT NOT NULL,
    interfaceid INT NOT NULL,
    companyid INT NOT NULL,
    functionrights VARCHAR(20) COLLATE CITEXT,
    PRIMARY KEY (userid, interfaceid, companyid)
);

CREATE TABLE LOiSettings (
    GodownID INT NOT NULL PRIMARY KEY,
    sNoBackDays SMALLINT NOT NULL DEFAULT 0,
    defaultfetch VARCHAR(30) COLLATE CITEXT
);

CREATE TABLE aPackageSettings (
    CompanyID INT NOT NULL PRIMARY KEY,
    InventoryID INT,
    stocktransfercontrolacc INT,
    IntegerQuantity BIT NOT NULL DEFAULT 0,
    Alias BIT NOT NULL DEFAULT 0,
    AllowItemCodeDuplication BIT NOT NULL DEFAULT 0
);

CREATE TABLE aAlias (
    AliasId INT NOT NULL,
    CompanyId INT NOT NULL,
    Alias VARCHAR(50) COLLATE CITEXT,
    PRIMARY KEY (CompanyId, AliasId)
);

CREATE TABLE aSettings (
    CompanyID INT NOT NULL PRIMARY KEY,
    CashGroupID INT
);

-- Column layouts of list views, by transaction, list and module.
CREATE TABLE alistviewheader (
    lvwid INT NOT NULL PRIMARY KEY,
    lvwtransname VARCHAR(50) COLLATE CITEXT NOT NULL,
    lvwname VARCHAR(50) COLLATE CITEXT NOT NULL,
    lvwmodulename VARCHAR(50) COLLATE CITEXT NOT NULL
);

CREATE TABLE alistviewdetails (
    lvwdid INT NOT NULL,
    lvwcolid INT NOT NULL,
    lvwdcolwidth INT NOT NULL,
    lvwdcolalign SMALLINT NOT NULL DEFAULT 0,
    PRIMARY KEY (lvwdid, lvwcolid)
);

-- Column headers of register grids; rows of one table come in the order of its columns.
CREATE TABLE atables (
    tableid INT NOT NULL PRIMARY KEY,
    tablename VARCHAR(100) COLLATE CITEXT NOT NULL
);

CREATE TABLE atablecolumns (
    tableid INT NOT NULL,
    columnorder SMALLINT NOT NULL,
    columnheader VARCHAR(50) COLLATE CITEXT NOT NULL,
    columnname VARCHAR(50) COLLATE CITEXT NOT NULL,
    PRIMARY KEY (tableid, columnorder)
);

CREATE TABLE ashopprintmessages (
    shopid INT NOT NULL,
    transtype VARCHAR(10) COLLATE CITEXT NOT NULL,
    lineno SMALLINT NOT NULL,
    message VARCHAR(100) COLLATE CITEXT,
    PRIMARY KEY (shopid, transtype, lineno)
);

-- Parties and currency ----------------------------------------------------------------------

CREATE TABLE avendormaster (
    vendorID INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    VendorName VARCHAR(100) COLLATE CITEXT NOT NULL,
    CurrencyID INT NOT NULL
);

CREATE TABLE acustomermaster (
    customerID INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    CustomerName VARCHAR(100) COLLATE CITEXT NOT NULL,
    CurrencyID INT NOT NULL
);

CREATE TABLE aaccountmaster (
    accountID INT NOT NULL PRIMARY KEY,
    CompanyID INT NOT NULL,
    AccountName VARCHAR(100) COLLATE CITEXT NOT NULL,
    CurrencyID INT NOT NULL
);

CREATE TABLE ExchangeRate (
    CompanyID INT NOT NULL,
    ExchangeID INT NOT NULL,
    ExchangeDate DATETIME NOT NULL,
    PRIMARY KEY (CompanyID, ExchangeID)
);

CREATE TABLE ExchangeRateDetail (
    CompanyID INT NOT NULL,
    ExchangeID INT NOT NULL,
    CurrencyID INT NOT NULL,
    SellingRate FLOAT NOT NULL,
    BuyingRate FLOAT NOT NULL,
    PRIMARY KEY (CompanyID, ExchangeID, CurrencyID)
);

-- Items and stock ---------------------------------------------------------------------------

CREATE TABLE aitemcategory (
    ItemCategoryID INT NOT NULL PRIMARY KEY,
    categorynamedescription VARCHAR(50) COLLATE CITEXT NOT NULL
);

CREATE TABLE aUnit (
    UnitId INT NOT NULL PRIMARY KEY,
    UnitCode VARCHAR(10) COLLATE CITEXT NOT NULL,
    UnitName VARCHAR(50) COLLATE CITEXT NOT NULL
);

CREATE TABLE aItem (
    ItemId INT NOT NULL PRIMARY KEY,
    itemcode VARCHAR(20) COLLATE CITEXT NOT NULL,
    ItemName VARCHAR(100) COLLATE CITEXT NOT NULL,
    PackSize VARCHAR(50) COLLATE CITEXT,
    ItemPrintName VARCHAR(40) COLLATE CITEXT,
    ItemCategoryID INT NOT NULL,
    UnitsId INT NOT NULL,
    itemrate FLOAT,
    part_code VARCHAR(30) COLLATE CITEXT,
    Active BIT NOT NULL DEFAULT 1,
    ExpiryNoOfDays INT
);
CREATE INDEX ixItemCode ON aItem (itemcode);

-- Barcodes printed on an item's packings; a scan of one counts one piece.
CREATE TABLE aitempackingdetail (
    itemid INT NOT NULL,
    packingbarcode VARCHAR(30) COLLATE CITEXT NOT NULL,
    PackingTypeId INT,
    PackingQty NUMERIC(18,3) NOT NULL DEFAULT 1,
    Active BIT NOT NULL DEFAULT 1
);
CREATE INDEX ixPackingBarcode ON aitempackingdetail (packingbarcode);
CREATE INDEX ixPackingItem ON aitempackingdetail (itemid);

-- The items a godown carries.
CREATE TABLE agodowndetail (
    godownid INT NOT NULL,
    itemid INT NOT NULL,
    ReorderLevel NUMERIC(18,3),
    PRIMARY KEY (godownid, itemid)
);
CREATE INDEX ixGodownDetailItem ON agodowndetail (itemid, godownid);

CREATE TABLE aShipment (
    sShipmentId INT NOT NULL PRIMARY KEY,
    sShipmentno VARCHAR(30) COLLATE CITEXT NOT NULL,
    sShipmentDate DATETIME NOT NULL,
    sVendorId INT
);

-- The book stock of a godown: one row for each item and shipment, standing at one location.
CREATE TABLE moigodownstock (
    gsGodownId INT NOT NULL,
    gsItemId INT NOT NULL,
    gsShipmentId INT NOT NULL,
    gsLocationId INT,
    gsStock NUMERIC(18,3) NOT NULL DEFAULT 0,
    gsBadStock NUMERIC(18,3) NOT NULL DEFAULT 0,
    gsItemCost FLOAT,
    PRIMARY KEY (gsGodownId, gsItemId, gsShipmentId)
);

-- Stock transfers between godowns and shops; until received, the quantities are under way.
CREATE TABLE loiStockTransferHeader (
    sthId INT NOT NULL PRIMARY KEY,
    sthNo VARCHAR(20) COLLATE CITEXT NOT NULL,
    sthDate DATETIME NOT NULL,
    sthFromLocationType CHAR(1) COLLATE CITEXT NOT NULL,
    sthFromLocationId INT NOT NULL,
    sthToLocationType CHAR(1) COLLATE CITEXT NOT NULL,
    sthToLocationId INT NOT NULL,
    sthStatus CHAR(1) COLLATE CITEXT NOT NULL DEFAULT 'D',
    sthCancelled BIT NOT NULL DEFAULT 0
);

CREATE TABLE loiStockTransferDetail (
    stdId INT NOT NULL,
    stdLineNo SMALLINT NOT NULL,
    stdItemId INT NOT NULL,
    stdQty NUMERIC(18,3) NOT NULL,
    PRIMARY KEY (stdId, stdLineNo)
);

-- Verification entries ----------------------------------------------------------------------

-- svhid numbers the entries of one godown, so the key is the pair. The posted and cancelled
-- flags are small integers, not bits: the register shows any other value than 0 and 1 as
-- null, and a bit column could not hold one.
CREATE TABLE loiStockVerificationHeader (
    svhid INT NOT NULL,
    svhno VARCHAR(30) COLLATE CITEXT,
    svhdate DATETIME,
    svhremarks VARCHAR(250) COLLATE CITEXT,
    svhverificationby VARCHAR(250) COLLATE CITEXT,
    svhGodownid INT NOT NULL,
    svhdepartmentid INT,
    svhconexrate FLOAT,
    svhdepexrate FLOAT,
    svhexchangerates VARCHAR(250) COLLATE CITEXT,
    svhFutureVc VARCHAR(10) COLLATE CITEXT,
    svhcreatedtime VARCHAR(8) COLLATE CITEXT,
    updatetime DATETIME,
    svhposted SMALLINT DEFAULT 0,
    svhcancelled SMALLINT DEFAULT 0,
    svhcancelledRemarks VARCHAR(255) COLLATE CITEXT,
    PRIMARY KEY (svhGodownid, svhid)
);

-- The lines of an entry share (svdid, svdGodownID); they have no key of their own.
CREATE TABLE loiStockVerificationDetail (
    svdid INT NOT NULL,
    svdGodownID INT NOT NULL,
    svdLocationid INT,
    svdShipmentID INT,
    svdItemID INT,
    svdAvailStock NUMERIC(18,3),
    svdVerifiedStock NUMERIC(18,3),
    svdavailbadstock NUMERIC(18,3),
    svdverifiedbadstock NUMERIC(18,3),
    svdcostprice FLOAT
);
-- The stock procedures sum an entry's lines by item and shipment: the quantities, location
-- and cost ride in the index too, so that a count of 100,000 lines is summed from the index
-- alone, in its order, without a seek into the table for each line.
CREATE INDEX ixVerificationDetail
    ON loiStockVerificationDetail (svdGodownID, svdid, svdItemID, svdShipmentID,
                                   svdVerifiedStock, svdAvailStock, svdverifiedbadstock,
                                   svdavailbadstock, svdLocationid, svdcostprice);

-- Location and expiry ledgers. The first eleven columns of each stand in this order, since
-- balancing rows are written by position.

CREATE TABLE loiLocationArrivalDetails (
    ladInterfaceId INT NOT NULL,
    ladGodownId INT NOT NULL,
    ladTransId INT NOT NULL,
    ladDetailId SMALLINT NOT NULL,
    ladLocationId INT NOT NULL,
    ladItemId INT NOT NULL,
    ladItemQty NUMERIC(18,3) NOT NULL,
    ladPackingTypeId INT,
    ladPakingQty NUMERIC(18,3),
    ladCancel SMALLINT NOT NULL DEFAULT 0,
    ladconfirmed SMALLINT NOT NULL DEFAULT 0,
    ladAdjustment SMALLINT NOT NULL DEFAULT 0
);
CREATE INDEX ixLocationArrivalItem ON loiLocationArrivalDetails (ladGodownId, ladItemId);
CREATE INDEX ixLocationArrivalDoc
    ON loiLocationArrivalDetails (ladInterfaceId, ladGodownId, ladTransId);

CREATE TABLE loiLocationIssueDetails (
    lidInterfaceId INT NOT NULL,
    lidGodownId INT NOT NULL,
    lidTransactionId INT NOT NULL,
    lidDetailId SMALLINT NOT NULL,
    lidLocationId INT NOT NULL,
    lidItemId INT NOT NULL,
    lidItemQty NUMERIC(18,3) NOT NULL,
    lidPackingTypeId INT,
    lidPakingQty NUMERIC(18,3),
    lidCancel SMALLINT NOT NULL DEFAULT 0,
    lidconfirmed SMALLINT NOT NULL DEFAULT 0,
    lidAdjustment SMALLINT NOT NULL DEFAULT 0
);
CREATE INDEX ixLocationIssueItem ON loiLocationIssueDetails (lidGodownId, lidItemId);
CREATE INDEX ixLocationIssueDoc
    ON loiLocationIssueDetails (lidInterfaceId, lidGodownId, lidTransactionId);

CREATE TABLE loiExpiryArrivalDetails (
    eadInterfaceId INT NOT NULL,
    eadGodownId INT NOT NULL,
    eadTransactionId INT NOT NULL,
    eaddetailid SMALLINT NOT NULL,
    eadexpirydate DATETIME,
    eadItemId INT NOT NULL,
    eadItemQty NUMERIC(18,3) NOT NULL,
    eadPackingTypeId INT,
    eadPackingQty NUMERIC(18,3),
    eadCancel SMALLINT NOT NULL DEFAULT 0,
    eadAdjustment SMALLINT NOT NULL DEFAULT 0
);
CREATE INDEX ixExpiryArrivalItem ON loiExpiryArrivalDetails (eadGodownId, eadItemId);
CREATE INDEX ixExpiryArrivalDoc
    ON loiExpiryArrivalDetails (eadInterfaceId, eadGodownId, eadTransactionId);

CREATE TABLE loiExpiryIssueDetails (
    eidinterfaceId INT NOT NULL,
    eidGodownId INT NOT NULL,
    eidTransactionId INT NOT NULL,
    eidDetailId SMALLINT NOT NULL,
    eidExpiryDate DATETIME,
    eidItemId INT NOT NULL,
    eidItemQty NUMERIC(18,3) NOT NULL,
    eidPackingTypeId INT,
    eidPackingQty NUMERIC(18,3),
    eidCancel SMALLINT NOT NULL DEFAULT 0,
    eidAdjustment SMALLINT NOT NULL DEFAULT 0
);
CREATE INDEX ixExpiryIssueItem ON loiExpiryIssueDetails (eidGodownId, eidItemId);
CREATE INDEX ixExpiryIssueDoc
    ON loiExpiryIssueDetails (eidinterfaceId, eidGodownId, eidTransactionId);

-- Stock procedures' own books -----------------------------------------------------------------

-- Stock rows that spupdateGodownVerification "F" had to create for an entry, so that "R"
-- removes them again when it leaves them empty.
CREATE TABLE loiVerificationNewStock (
    vnsGodownId INT NOT NULL,
    vnsSvhId INT NOT NULL,
    vnsItemId INT NOT NULL,
    vnsShipmentId INT NOT NULL,
    PRIMARY KEY (vnsGodownId, vnsSvhId, vnsItemId, vnsShipmentId)
);

-- Every good stock change made by spGodownTotalStockVerification, the only record from which
-- spReverseGodownTotalStockVerification undoes it.
CREATE TABLE loiTotalVerificationChange (
    tvcGodownId INT NOT NULL,
    tvcSvhId INT NOT NULL,
    tvcItemId INT NOT NULL,
    tvcShipmentId INT NOT NULL,
    tvcCreated BIT NOT NULL DEFAULT 0,
    tvcOldStock NUMERIC(18,3) NOT NULL,
    tvcNewStock NUMERIC(18,3) NOT NULL
);
-- By item and shipment as well: the reversal finds each stock row's change by seeking, not by
-- scanning the whole record of a count over a large godown.
CREATE INDEX ixTotalVerificationChange
    ON loiTotalVerificationChange (tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId);

-- Stored procedures, run by the data layer inside the caller's transaction: params names the
-- parameters in order with their types, body is SQLite statements separated by ';'.
CREATE TABLE sv_procedure (
    name TEXT PRIMARY KEY COLLATE NOCASE,
    params TEXT NOT NULL,
    body TEXT NOT NULL
);

-- A procedure refuses a bad argument by inserting a row here: every named constraint that
-- the row breaks becomes the error text, and no row is ever stored.
CREATE TABLE sv_guard (
    reason TEXT NOT NULL,
    CONSTRAINT "mode must be F or R" CHECK (reason <> 'mode')
);

-- Sibling services ----------------------------------------------------------------------------

-- Faults reported by any routine of the application (the fault desk).
CREATE TABLE aFaultLog (
    FaultId INTEGER PRIMARY KEY,
    SourceName VARCHAR(100) COLLATE CITEXT,
    UserName VARCHAR(50) COLLATE CITEXT,
    RoutineName VARCHAR(100) COLLATE CITEXT,
    ErrorNumber INT,
    ErrorSource VARCHAR(250) COLLATE CITEXT,
    ErrorDescription VARCHAR(1000) COLLATE CITEXT,
    TransactionMode VARCHAR(10) COLLATE CITEXT,
    LoggedAt DATETIME NOT NULL
);

-- Who did what to which document, and when (the activity trail).
CREATE TABLE aActivityTrail (
    ActivityId INTEGER PRIMARY KEY,
    CompanyID INT NOT NULL,
    GodownID INT NOT NULL,
    UserID INT NOT NULL,
    InterfaceID INT NOT NULL,
    TransKey VARCHAR(50) COLLATE CITEXT,
    TransNo VARCHAR(50) COLLATE CITEXT,
    ActionType CHAR(1) COLLATE CITEXT NOT NULL,
    LoggedTime DATETIME,
    SavedTime DATETIME NOT NULL
);

-- Colours and font of the forms, per company (the screen palette).
CREATE TABLE aScreenPalette (
    CompanyID INT NOT NULL PRIMARY KEY,
    FormBackColor INT NOT NULL,
    FormForeColor INT NOT NULL,
    ControlBackColor INT NOT NULL,
    ControlForeColor INT NOT NULL,
    ButtonBackColor INT NOT NULL,
    GridBackColor INT NOT NULL,
    GridForeColor INT NOT NULL,
    FontName VARCHAR(50) COLLATE CITEXT NOT NULL,
    FontSize SMALLINT NOT NULL
);

-- A user's own column widths for a grid (the grid column profiles).
CREATE TABLE aGridColumnProfile (
    UserID INT NOT NULL,
    CompanyID INT NOT NULL,
    GridName VARCHAR(100) COLLATE CITEXT NOT NULL,
    ColumnIndex SMALLINT NOT NULL,
    ColumnWidth INT NOT NULL,
    PRIMARY KEY (UserID, CompanyID, GridName, ColumnIndex)
);
