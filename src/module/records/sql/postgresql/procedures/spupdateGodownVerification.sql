-- Moves the godown's stock by what an entry counted: for each item and shipment of its lines,
-- good stock by counted minus book good stock, bad stock by counted minus book bad stock.
-- "F" applies the lines, "R" takes exactly that back, so that F then R leaves every stock row
-- as it was. Quantities are kept to 3 decimals. It runs inside the caller's transaction.
CREATE FUNCTION spupdateGodownVerification(svhid integer, godownid integer, mode varchar)
RETURNS integer
LANGUAGE plpgsql AS $$
DECLARE
    direction text := upper(trim(coalesce(mode, '')));
BEGIN
    IF direction NOT IN ('F', 'R') THEN
        RAISE EXCEPTION 'mode must be F or R' USING ERRCODE = '23514';
    END IF;

    -- A line may name a shipment that the godown holds no row for: F creates the row at the
    -- line's location and remembers it, so that R can remove it again. A clerk saving in the
    -- same godown at the same moment may create the same row first: then it is theirs, and
    -- this entry only moves it.
    IF direction = 'F' THEN
        WITH created AS (
            INSERT INTO moigodownstock (gsGodownId, gsItemId, gsShipmentId, gsLocationId,
                                        gsStock, gsBadStock, gsItemCost)
            SELECT godownid, d.svdItemID, d.svdShipmentID, min(d.svdLocationid), 0, 0,
                   max(d.svdcostprice)
            FROM loiStockVerificationDetail d
            WHERE d.svdid = svhid AND d.svdGodownID = godownid
              AND d.svdItemID IS NOT NULL AND d.svdShipmentID IS NOT NULL
              AND NOT EXISTS (SELECT 1 FROM moigodownstock gs
                              WHERE gs.gsGodownId = godownid AND gs.gsItemId = d.svdItemID
                                AND gs.gsShipmentId = d.svdShipmentID)
            GROUP BY d.svdItemID, d.svdShipmentID
            ON CONFLICT DO NOTHING
            RETURNING gsItemId, gsShipmentId)
        INSERT INTO loiVerificationNewStock (vnsGodownId, vnsSvhId, vnsItemId, vnsShipmentId)
        SELECT godownid, svhid, c.gsItemId, c.gsShipmentId FROM created c
        ON CONFLICT DO NOTHING;
    END IF;

    UPDATE moigodownstock
    SET gsStock = round(gsStock + m.sign * m.good, 3),
        gsBadStock = round(gsBadStock + m.sign * m.bad, 3)
    FROM (SELECT d.svdItemID AS item,
                 d.svdShipmentID AS shipment,
                 (CASE direction WHEN 'R' THEN -1 ELSE 1 END) AS sign,
                 round(sum(coalesce(d.svdVerifiedStock, 0) - coalesce(d.svdAvailStock, 0)), 3)
                     AS good,
                 round(sum(coalesce(d.svdverifiedbadstock, 0) - coalesce(d.svdavailbadstock, 0)),
                       3) AS bad
          FROM loiStockVerificationDetail d
          WHERE d.svdid = svhid AND d.svdGodownID = godownid
          GROUP BY d.svdItemID, d.svdShipmentID) m
    WHERE gsGodownId = godownid AND gsItemId = m.item AND gsShipmentId = m.shipment;

    IF direction = 'R' THEN
        DELETE FROM moigodownstock
        WHERE gsGodownId = godownid AND gsStock = 0 AND gsBadStock = 0
          AND EXISTS (SELECT 1 FROM loiVerificationNewStock n
                      WHERE n.vnsGodownId = godownid AND n.vnsSvhId = svhid
                        AND n.vnsItemId = gsItemId AND n.vnsShipmentId = gsShipmentId);

        DELETE FROM loiVerificationNewStock
        WHERE vnsGodownId = godownid AND vnsSvhId = svhid;
    END IF;
    RETURN 0;
END
$$;
