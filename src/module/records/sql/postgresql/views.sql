-- Views that the stock verification module reads. Columns are plain column references where
-- the data layer must see their declared type (dates).

-- The book stock that a verification is held against: by godown, item, location and shipment,
-- with the location's name.
CREATE VIEW vwinquirygodownstock AS
SELECT gs.gsGodownId AS gsGodownId,
       gs.gsItemId AS gsItemId,
       gs.gsLocationId AS gsLocationId,
       gs.gsShipmentId AS gsShipmentId,
       gs.gsStock AS gsStock,
       gs.gsBadStock AS gsBadStock,
       gs.gsItemCost AS gsItemCost,
       l.lLocationName AS lLocationName,
       l.lGodownId AS lGodownId
FROM moigodownstock gs
LEFT JOIN loiLocation l ON l.lGodownId = gs.gsGodownId AND l.lLocationId = gs.gsLocationId;

-- An item's description as lists show it: its name, then its pack size when it has one.
CREATE VIEW vwitemdescription AS
SELECT i.ItemId AS itemID,
       (CASE WHEN trim(coalesce(i.PackSize, '')) = '' THEN i.ItemName
             ELSE i.ItemName || ' ' || trim(i.PackSize) END)::sv_text AS itemdescription
FROM aItem i;

-- The description printed on slips and reports: the short print name where one is set.
CREATE VIEW vwItemDescriptionPrint AS
SELECT i.ItemId AS ItemId,
       (CASE WHEN trim(coalesce(i.ItemPrintName, '')) <> '' THEN trim(i.ItemPrintName)
             WHEN trim(coalesce(i.PackSize, '')) = '' THEN i.ItemName
             ELSE i.ItemName || ' ' || trim(i.PackSize) END)::sv_text AS ItemDescription
FROM aItem i;

-- Quantities under way: the lines of stock transfers dispatched and not yet received, once
-- at the sending location and once at the receiving one. LocationType is 'G' for a godown,
-- 'S' for a shop.
CREATE VIEW vwQuantityUnProcessed AS
SELECT d.stdItemId AS ItemId,
       h.sthFromLocationId AS LocationId,
       h.sthFromLocationType AS LocationType,
       h.sthNo AS TransNo,
       h.sthDate AS GDate,
       (CASE h.sthFromLocationType
             WHEN 'G' THEN (SELECT g.GodownName FROM aGodown g WHERE g.GodownID = h.sthFromLocationId)
             ELSE (SELECT s.ShopName FROM aShop s WHERE s.ShopId = h.sthFromLocationId) END)
           AS Fromlocation,
       (CASE h.sthToLocationType
             WHEN 'G' THEN (SELECT g.GodownName FROM aGodown g WHERE g.GodownID = h.sthToLocationId)
             ELSE (SELECT s.ShopName FROM aShop s WHERE s.ShopId = h.sthToLocationId) END)
           AS ToLocation,
       d.stdQty AS TransQty
FROM loiStockTransferHeader h
JOIN loiStockTransferDetail d ON d.stdId = h.sthId
WHERE h.sthStatus = 'D' AND h.sthCancelled = 0
UNION ALL
SELECT d.stdItemId,
       h.sthToLocationId,
       h.sthToLocationType,
       h.sthNo,
       h.sthDate,
       (CASE h.sthFromLocationType
             WHEN 'G' THEN (SELECT g.GodownName FROM aGodown g WHERE g.GodownID = h.sthFromLocationId)
             ELSE (SELECT s.ShopName FROM aShop s WHERE s.ShopId = h.sthFromLocationId) END),
       (CASE h.sthToLocationType
             WHEN 'G' THEN (SELECT g.GodownName FROM aGodown g WHERE g.GodownID = h.sthToLocationId)
             ELSE (SELECT s.ShopName FROM aShop s WHERE s.ShopId = h.sthToLocationId) END),
       d.stdQty
FROM loiStockTransferHeader h
JOIN loiStockTransferDetail d ON d.stdId = h.sthId
WHERE h.sthStatus = 'D' AND h.sthCancelled = 0;

-- Verification entries with their godown, as slips and reports print them.
CREATE VIEW vwgodownstockverification AS
SELECT h.svhid AS svhid,
       h.svhGodownid AS svhGodownid,
       h.svhno AS svhNo,
       h.svhdate AS svhDate,
       h.svhverificationby AS svhVerificationby,
       h.svhremarks AS svhRemarks,
       h.svhFutureVc AS svhFutureVc,
       h.svhposted AS svhposted,
       h.svhcancelled AS svhcancelled,
       g.GodownName AS GodownName
FROM loiStockVerificationHeader h
LEFT JOIN aGodown g ON g.GodownID = h.svhGodownid;

-- The last closed day of each godown.
CREATE VIEW vwGodownCloseDate AS
SELECT c.GodownID AS GodownID,
       c.CloseDate AS closedate
FROM aGodownClosing c
WHERE c.CloseDate = (SELECT max(x.CloseDate) FROM aGodownClosing x WHERE x.GodownID = c.GodownID);
